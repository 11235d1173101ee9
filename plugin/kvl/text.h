#ifndef PLUGIN_KVL_TEXT_H_
#define PLUGIN_KVL_TEXT_H_

#include "runtime/containers/list.h"
#include "runtime/containers/vorq_string.h"

namespace KVL {

// The text and list types that cross the engine border.
using Name = vorq_string<char>;
using Utf8Text = vorq_string<unsigned char>;
using UIDList = List<unsigned long long>;

}  // namespace KVL

#endif  // PLUGIN_KVL_TEXT_H_
