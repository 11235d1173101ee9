// Bodies of the engine's interfaces that hold no logic of their own.
#include "plugin/kvl/container_interface.h"
#include "plugin/kvl/control_interface.h"
#include "plugin/kvl/file_inspector_interface.h"
#include "plugin/kvl/media_interface.h"
#include "plugin/kvl/properties.h"
#include "plugin/kvl/remote_file_interface.h"

namespace KVL {

ContainerInterface::ContainerInterface() = default;
ContainerInterface::~ContainerInterface() = default;

void ContainerInterface::init(ControlInterface* control, unsigned long long uid) {
  this->control = control;
  containerUid = uid;
  metadata = nullptr;
}

unsigned long long ContainerInterface::containerUID() { return containerUid; }

MediaInterface::~MediaInterface() = default;
RemoteFileInterface::~RemoteFileInterface() = default;
FileInspectorInterface::~FileInspectorInterface() = default;
ControlInterface::~ControlInterface() = default;
DataNotReadySink::~DataNotReadySink() = default;
Properties::~Properties() = default;

}  // namespace KVL
