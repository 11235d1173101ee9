// Appending in the caller's buffer, which must hold both texts.
#ifndef RUNTIME_TEXT_VORQ_STRING_CONCAT_H_
#define RUNTIME_TEXT_VORQ_STRING_CONCAT_H_

#include "runtime/text/vorq_string.h"

extern "C" {

// Copies `source` behind the text of `destination` and terminates; gives 0.
// A null, empty or too long source gives -1 and leaves `destination` as it
// was; a null destination gives -2. A too long destination counts as empty
// and is written from its start.
int VorQStringCat(VorQString* destination, const VorQString* source);
int VorQStringExCat(VorQString* destination, const VorQString* source);

}  // extern "C"

#endif  // RUNTIME_TEXT_VORQ_STRING_CONCAT_H_
