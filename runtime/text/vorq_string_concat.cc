#include "runtime/text/vorq_string_concat.h"

#include "runtime/text/text_helpers.h"

int VorQStringCat(VorQString* destination, const VorQString* source) {
  if (!destination)
    return -2;
  int length = VorQStringLen(source);
  if (length == 0)
    return -1;
  CopyTerminated(destination + VorQStringLen(destination), source, length);
  return 0;
}

int VorQStringExCat(VorQString* destination, const VorQString* source) {
  return VorQStringCat(destination, source);
}
