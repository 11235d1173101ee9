#ifndef HOST_ENGINE_SIDE_VERSION_TEXT_H_
#define HOST_ENGINE_SIDE_VERSION_TEXT_H_

#include <string>

namespace kvlhost {

// What `kvl-play --version` prints: the project's version, and mkvparser's
// version with the file of the libwebm that this process runs. kvl-play links
// the same libwebm.so.1 as the module, so the module, loaded later, runs
// against that very copy.
std::string VersionText();

}  // namespace kvlhost

#endif  // HOST_ENGINE_SIDE_VERSION_TEXT_H_
