#ifndef PLUGIN_KVL_CONTAINER_INTERFACE_H_
#define PLUGIN_KVL_CONTAINER_INTERFACE_H_

#include <map>
#include <vector>

#include "plugin/kvl/export.h"
#include "plugin/kvl/format_descriptor.h"
#include "plugin/kvl/text.h"

struct _xmlDoc;

namespace KVL {

class ControlInterface;
class MediaSource;
class PlaybackProfile;

// The interface of a demultiplexer.
class KVL_API ContainerInterface {
 public:
  ContainerInterface();
  virtual ~ContainerInterface();

  virtual void init(ControlInterface* control, unsigned long long uid);
  virtual bool canPlay(MediaSource& source, const PlaybackProfile* profile,
                       void** savedSession,
                       std::vector<FormatDescriptor>* unsupportedFormats) = 0;
  virtual void closeSavedSession(void* session) = 0;
  virtual int open(const MediaSource& source) = 0;
  virtual int open(void* session) = 0;
  virtual vorq_string<unsigned char> getFilename() = 0;
  virtual unsigned long long containerUID();
  virtual int close() = 0;
  virtual List<unsigned long long> getTitles() = 0;
  virtual vorq_string<unsigned char> getTitleName(unsigned long long uid) = 0;
  virtual int openTitle(unsigned long long uid) = 0;
  virtual int closeTitle(bool keep) = 0;
  virtual int getFileSize(unsigned long long* size) = 0;

  // The metadata document, owned by the container; null while there is none.
  _xmlDoc* metadataDocument() const { return metadata; }
  const std::map<vorq_string<unsigned char>, unsigned int>& supportedMimeTypes() const {
    return mimeTypes;
  }

 protected:
  ControlInterface* control = nullptr;
  unsigned long long containerUid = 0;
  _xmlDoc* metadata = nullptr;
  std::map<vorq_string<unsigned char>, unsigned int> mimeTypes;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_CONTAINER_INTERFACE_H_
