// Copies a Matroska file as a live recording leaves it: the size of the
// Segment and of every Cluster written as "unknown", in the same number of
// bytes, and nothing else changed, so that every tool sees the same packets.
//   make_unknown_size IN OUT
// Top-level elements and the Segment's children are walked by their sizes;
// an unknown size already in IN ends the walk with an error, since only a
// parse of the element's children would find its end.
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr uint32_t kSegmentId = 0x18538067;
constexpr uint32_t kClusterId = 0x1F43B675;

// The head of one element: its id, and where its size field and data lie.
struct Head {
  uint32_t id = 0;
  long long sizeAt = 0;
  int sizeBytes = 0;
  long long dataAt = 0;
  long long size = 0;
  bool unknown = false;
};

// Reads the variable-length integer at `at` into `value`, the length marker
// dropped, and gives its length in bytes, or 0 if it can't be read or is
// longer than `longest`. `allOnes` tells whether every value bit is set.
int ReadVint(FILE* file, long long at, int longest, uint64_t& value, bool& allOnes) {
  unsigned char bytes[8];
  if (fseeko(file, at, SEEK_SET) != 0 || std::fread(bytes, 1, 1, file) != 1) return 0;
  int length = 1;
  while (length <= 8 && !(bytes[0] & (0x80 >> (length - 1)))) ++length;
  if (length > longest || std::fread(bytes + 1, 1, length - 1, file) != size_t(length - 1))
    return 0;
  value = bytes[0] & (0xFF >> length);
  allOnes = value == (0xFFu >> length);
  for (int i = 1; i < length; ++i) {
    value = value << 8 | bytes[i];
    allOnes = allOnes && bytes[i] == 0xFF;
  }
  return length;
}

bool ReadHead(FILE* file, long long at, Head& head) {
  uint64_t value = 0;
  bool allOnes = false;
  const int idBytes = ReadVint(file, at, 4, value, allOnes);
  if (idBytes == 0) return false;
  head.id = static_cast<uint32_t>(value | 1ULL << (7 * idBytes));
  head.sizeAt = at + idBytes;
  head.sizeBytes = ReadVint(file, head.sizeAt, 8, value, allOnes);
  head.dataAt = head.sizeAt + head.sizeBytes;
  head.size = static_cast<long long>(value);
  head.unknown = allOnes;
  return head.sizeBytes > 0;
}

// The size fields to rewrite, each as its head; false if the walk stopped
// on an element it couldn't read or whose end it couldn't tell.
bool FindSizeFields(FILE* file, long long length, std::vector<Head>& fields) {
  for (long long at = 0; at < length;) {
    Head head;
    if (!ReadHead(file, at, head) || head.unknown) return false;
    at = head.dataAt + head.size;
    if (head.id != kSegmentId) continue;
    fields.push_back(head);
    const long long end = at < length ? at : length;
    for (long long child = head.dataAt; child < end;) {
      Head inner;
      if (!ReadHead(file, child, inner) || inner.unknown) return false;
      if (inner.id == kClusterId) fields.push_back(inner);
      child = inner.dataAt + inner.size;
    }
  }
  return true;
}

bool Copy(FILE* in, FILE* out) {
  std::vector<unsigned char> buffer(1 << 20);
  if (fseeko(in, 0, SEEK_SET) != 0) return false;
  for (size_t got; (got = std::fread(buffer.data(), 1, buffer.size(), in)) > 0;) {
    if (std::fwrite(buffer.data(), 1, got, out) != got) return false;
  }
  return !std::ferror(in);
}

// All value bits set, the length marker kept: the first byte 0xFF >> (n - 1).
bool WriteUnknown(FILE* out, const Head& field) {
  unsigned char bytes[8] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
  bytes[0] = static_cast<unsigned char>(0xFF >> (field.sizeBytes - 1));
  return fseeko(out, field.sizeAt, SEEK_SET) == 0 &&
         std::fwrite(bytes, 1, field.sizeBytes, out) == size_t(field.sizeBytes);
}

int Fail(const char* what, const char* path) {
  std::fprintf(stderr, "make_unknown_size: %s %s\n", what, path);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_unknown_size IN OUT\n");
    return 2;
  }
  FILE* in = std::fopen(argv[1], "rb");
  if (!in) return Fail("cannot open", argv[1]);
  fseeko(in, 0, SEEK_END);
  std::vector<Head> fields;
  const bool walked = FindSizeFields(in, ftello(in), fields) && !fields.empty();
  FILE* out = walked ? std::fopen(argv[2], "w+b") : nullptr;
  bool written = out && Copy(in, out);
  for (const Head& field : fields) written = written && WriteUnknown(out, field);
  std::fclose(in);
  if (out && std::fclose(out) != 0) written = false;
  if (!walked) return Fail("no Matroska layout of known sizes in", argv[1]);
  return written ? 0 : Fail("cannot write", argv[2]);
}
