#ifndef HOST_PLAY_SOURCE_URI_H_
#define HOST_PLAY_SOURCE_URI_H_

#include <string>

namespace kvlhost {

// The URI the engine hands the plug-in for a command-line argument. Text
// that starts with a scheme ("file:...", "http://...") is taken as it is;
// anything else is a path, made absolute and prefixed with "file://". No
// character is percent-escaped: the plug-in reads a URI as raw text.
std::string SourceUri(const std::string& argument);

}  // namespace kvlhost

#endif  // HOST_PLAY_SOURCE_URI_H_
