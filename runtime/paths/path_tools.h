#ifndef RUNTIME_PATHS_PATH_TOOLS_H_
#define RUNTIME_PATHS_PATH_TOOLS_H_

#include "runtime/containers/vorq_string.h"

namespace KVL {
namespace PathTools {

constexpr unsigned int kNotAFilePath = 0x80800001;

// Turns a "file" URI (scheme in any case) into the path it names. The URI is
// raw text: "%" sequences stay literal, spaces and UTF-8 pass. Query and
// fragment are not part of the path. Returns 0 with `path` assigned, or
// kNotAFilePath with `path` untouched (bare paths and other schemes included).
unsigned int URIToSystemFilePath(const vorq_string<unsigned char>& uri,
                                 vorq_string<unsigned char>& path);

}  // namespace PathTools
}  // namespace KVL

#endif  // RUNTIME_PATHS_PATH_TOOLS_H_
