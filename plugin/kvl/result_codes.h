#ifndef PLUGIN_KVL_RESULT_CODES_H_
#define PLUGIN_KVL_RESULT_CODES_H_

namespace KVL {

// The answers of the plug-in's operations that the engine tells apart, other
// than 0 for success and 1 (true) for "done" from info(), setReadSpeed() and
// setReadMode(). Their values are the engine's and never change.

// getInterface(): no interface of that name; the result pointer is null.
constexpr int kNoSuchInterface = 3;

// open(), openTitle(), getFileSize(), a video seekStream() and the exported
// JRT allocation functions: the operation failed. An audio seekStream()
// answers with the parser's own negative status instead.
constexpr int kFailed = -1;

// readStream() in read mode 2: a chunk has gone out since the last open or
// seek, and no other goes out before the next seek. Not the stream's end,
// which is 0 with no chunk.
constexpr int kReadNothingUntilSeek = -8;

// getSyncPoint(): the pointer for the answer is null.
constexpr int kNullSyncPoint = static_cast<int>(0x80100001u);

// openFile(): the URI can't be turned into a file path.
constexpr unsigned int kUriNotAFilePath = 0x80800001u;

}  // namespace KVL

#endif  // PLUGIN_KVL_RESULT_CODES_H_
