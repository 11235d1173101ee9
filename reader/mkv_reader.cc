#include "reader/mkv_reader.h"

#include <algorithm>
#include <cstring>

namespace KVL {
namespace {

// Windows start on this boundary, one step before the request, so that the
// backward peeks of the parser and a read that crosses the end of the last
// window land in the window that the forward read just filled.
constexpr long long kWindowAlign = 4096;

// Reads of at most this size go through the window; larger ones go direct.
constexpr long kLargestWindowedRead = MkvReader::kWindowBytes - 2 * kWindowAlign;

// A request further past the window's end than this is the parser skipping
// bytes it doesn't want, as the probe does from cluster head to cluster head;
// smaller gaps are a cluster's walk stepping over other tracks' frames. Past
// a short window, one that a skip fetched, a gap longer than the window
// itself is a skip too: the probe's next head, however short the cluster.
constexpr long long kSkipGapBytes = 4 * kWindowAlign;

// What is fetched at a position skipped to: a cluster's id and size, its
// timecode and the head of its first block, with room to spare, and no more,
// since the next request is likely the next cluster's head. A read that then
// runs on past this short window is sequential again and fills a whole one.
constexpr long kSkipReadBytes = 256;

}  // namespace

MkvReader::MkvReader() = default;

MkvReader::~MkvReader() { Close(); }

int MkvReader::Open(const char* fileName) {
  if (!fileName || file_) return -1;
  FILE* file = std::fopen(fileName, "rb");
  if (!file) return -1;
  // The window does the buffering; stdio's own buffer would only copy twice.
  std::setvbuf(file, nullptr, _IONBF, 0);
  fseeko(file, 0, SEEK_END);
  length_ = ftello(file);
  fseeko(file, 0, SEEK_SET);
  file_ = file;
  windowBytes_ = 0;
  return 0;
}

void MkvReader::Close() {
  if (!file_) return;
  std::fclose(file_);
  file_ = nullptr;
  window_.reset();
  windowBytes_ = 0;
}

int MkvReader::Length(long long* total, long long* available) {
  if (!file_) return -1;
  if (total) *total = length_;
  if (available) *available = length_;
  return 0;
}

int MkvReader::Read(long long position, long length, unsigned char* buffer) {
  if (!file_ || position < 0 || length < 0) return -1;
  if (length == 0) return 0;
  if (position >= length_) return -1;
  if (length > kLargestWindowedRead) return ReadAt(position, length, buffer) == length ? 0 : -1;

  const bool inWindow = position >= windowStart_ &&
                        position + length <= windowStart_ + windowBytes_;
  if (!inWindow && !FillWindow(position, length)) return -1;
  const long offset = static_cast<long>(position - windowStart_);
  const long copied = std::max(0L, std::min(length, windowBytes_ - offset));
  std::memcpy(buffer, window_.get() + offset, copied);
  return copied == length ? 0 : -1;
}

long MkvReader::ReadAt(long long position, long length, unsigned char* buffer) {
  if (fseeko(file_, position, SEEK_SET) != 0) return 0;
  return static_cast<long>(std::fread(buffer, 1, length, file_));
}

bool MkvReader::FillWindow(long long position, long length) {
  if (!window_) window_.reset(new unsigned char[kWindowBytes]);
  const long long gap = std::min<long long>(kSkipGapBytes, windowBytes_);
  const bool skipping = windowBytes_ > 0 && position >= windowStart_ + windowBytes_ + gap;
  if (skipping) {
    windowStart_ = position;
    windowBytes_ = ReadAt(position, std::max(kSkipReadBytes, length), window_.get());
    return windowBytes_ > 0;
  }
  windowStart_ = std::max(0LL, position - position % kWindowAlign - kWindowAlign);
  windowBytes_ = ReadAt(windowStart_, kWindowBytes, window_.get());
  return windowBytes_ > position - windowStart_;
}

}  // namespace KVL
