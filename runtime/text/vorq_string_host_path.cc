#include "runtime/text/vorq_string_host_path.h"

#include "runtime/text/text_helpers.h"

namespace {

// Converts into `destination`, which the caller empties on failure.
bool ConvertPath(const char* source, char* destination) {
  if (source[0] == '\\' && source[1] == '\\')
    ++source;
  int offset = 0;
  for (; source[offset] != 0; ++offset) {
    char element = source[offset];
    if (element == '\\') {
      if (source[offset + 1] == '\\')
        return false;
      element = '/';
    }
    destination[offset] = element;
    // A slash pair at the very start stays: it names a network path.
    if (offset >= 2 && element == '/' && destination[offset - 1] == '/')
      return false;
  }
  destination[offset] = 0;
  return true;
}

// Converts a copy taken from the string arena into a second block, so that
// `source` and `destination` may be one buffer.
bool ConvertThroughArena(const VorQString* source, VorQString* destination) {
  int length = VorQStringLen(source);
  VorQString* copy = VorQStringAllocate(length + 1);
  VorQString* converted = VorQStringAllocate(length + 1);
  bool converted_ok = copy && converted;
  if (converted_ok) {
    CopyTerminated(copy, source, length);
    converted_ok = ConvertPath(copy, converted);
  }
  if (converted_ok)
    CopyTerminated(destination, converted, VorQStringLen(converted));
  VorQStringDeallocate(copy);
  VorQStringDeallocate(converted);
  return converted_ok;
}

}  // namespace

int VorQStringConvertCharPathToHost(const char* source, char* destination) {
  if (!destination)
    return -1;
  if (source && ConvertPath(source, destination))
    return 0;
  destination[0] = 0;
  return -1;
}

int VorQStringConvertPathToHost(const VorQString* source,
                                VorQString* destination) {
  if (!destination)
    return -1;
  if (source && ConvertThroughArena(source, destination))
    return 0;
  destination[0] = 0;
  return -1;
}
