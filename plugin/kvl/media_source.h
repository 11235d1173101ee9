#ifndef PLUGIN_KVL_MEDIA_SOURCE_H_
#define PLUGIN_KVL_MEDIA_SOURCE_H_

#include "plugin/kvl/export.h"
#include "plugin/kvl/text.h"

namespace KVL {

class VerifierInterface;

// Optional services of a medium. Only the verifier slot means anything to
// the plug-in, and only whether it is set.
class KVL_API ReadInterfaces {
 public:
  ReadInterfaces();
  ~ReadInterfaces();

  VerifierInterface*& verifier() { return slots_[0]; }
  VerifierInterface* const& verifier() const { return slots_[0]; }

 private:
  VerifierInterface* slots_[5];
};

// The engine's description of a medium; the plug-in only reads it.
class KVL_API MediaSource {
 public:
  MediaSource(const vorq_string<unsigned char>& uri,
              const vorq_string<unsigned char>& mimeType);

  const vorq_string<unsigned char>& getUri() const { return uri_; }
  const vorq_string<unsigned char>& getMimeType() const { return mimeType_; }
  const ReadInterfaces& getReadInterfaces() const { return readInterfaces_; }
  ReadInterfaces& readInterfaces() { return readInterfaces_; }

 private:
  vorq_string<unsigned char> uri_;
  vorq_string<unsigned char> mimeType_;
  ReadInterfaces readInterfaces_;
};

}  // namespace KVL

#endif  // PLUGIN_KVL_MEDIA_SOURCE_H_
