#include "plugin/interface_names.h"

namespace KVL {

// Defined in one place so that they are built in this order at load and
// destroyed in the reverse order at exit.
const vorq_string<char> kContainerInterfaceName("com.vorq.streamengine.interface.container");
const vorq_string<char> kMediaInterfaceName("com.vorq.streamengine.interface.media");
const vorq_string<char> kBasicPlaybackInterfaceName("com.vorq.playback.interface.BasicPlayback");
const vorq_string<char> kComponentInterfaceName("com.vorq.streamengine.interface.component");
const vorq_string<char> kInputComponentName("com.vorq.streamengine.component.input");
const vorq_string<char> kInputInterfaceName("com.vorq.streamengine.interface.input");
const vorq_string<char> kSingleOutputComponentName(
    "com.vorq.streamengine.component.output.single");
const vorq_string<char> kMultipleOutputComponentName(
    "com.vorq.streamengine.component.output.multiple");
const vorq_string<char> kOutputComponentName("com.vorq.streamengine.component.output");
const vorq_string<char> kOutputInterfaceName("com.vorq.streamengine.interface.output");
const vorq_string<char> kFileInspectorInterfaceName(
    "com.vorq.streamengine.interface.fileInspector");

}  // namespace KVL
