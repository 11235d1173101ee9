#ifndef PLUGIN_INTERFACE_NAMES_H_
#define PLUGIN_INTERFACE_NAMES_H_

#include "plugin/kvl/text.h"

namespace KVL {

// The engine's interface and component names, built when the module loads.
extern const vorq_string<char> kContainerInterfaceName;
extern const vorq_string<char> kMediaInterfaceName;
extern const vorq_string<char> kBasicPlaybackInterfaceName;
extern const vorq_string<char> kComponentInterfaceName;
extern const vorq_string<char> kInputComponentName;
extern const vorq_string<char> kInputInterfaceName;
extern const vorq_string<char> kSingleOutputComponentName;
extern const vorq_string<char> kMultipleOutputComponentName;
extern const vorq_string<char> kOutputComponentName;
extern const vorq_string<char> kOutputInterfaceName;
extern const vorq_string<char> kFileInspectorInterfaceName;

}  // namespace KVL

#endif  // PLUGIN_INTERFACE_NAMES_H_
