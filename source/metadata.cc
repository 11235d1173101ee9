#include <libxml/tree.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "plugin/mkv_source.h"
#include "runtime/base64/rfc_base64_codec.h"
#include "source/tag_data.h"

namespace KVL {
namespace {

// Larger binary values are not copied into the document.
constexpr uint64_t kLargestBinaryTag = 150000;

const char* ElementName(uint32_t id) {
  switch (id) {
    case kTagBinary: return "Binary";
    case kTagName: return "Name";
    case kTagString: return "String";
    case kTagLanguage: return "TagLanguage";
    default: return nullptr;
  }
}

// The slot's content as document text. A text value is read no further
// than its size, even when its terminator is missing.
std::string ContentOf(const MKVSource::tagData::Slot& slot) {
  const char* value = static_cast<const char*>(slot.value);
  if (slot.id != kTagBinary) return std::string(value, strnlen(value, slot.size));
  if (slot.size > kLargestBinaryTag) return "[Binary Data Omitted]";
  qv64::RFCBase64Codec codec;
  return codec.encode(value, static_cast<int>(slot.size));
}

}  // namespace

void MKVSource::processSimpleTag(_xmlNode* node, tagData* tag) {
  if (!node || !tag) return;
  for (tagData::Slot& slot : tag->slots) {
    if (!slot.value) continue;
    if (const char* name = ElementName(slot.id)) {
      // Tag text is text, not markup: "&" or "<" in it must stay as written.
      const std::string content = ContentOf(slot);
      xmlNewTextChild(node, nullptr, BAD_CAST name, BAD_CAST content.c_str());
    }
    std::free(slot.value);
    slot = {};
  }
}

// Nothing in a Matroska file is read into the document yet.
void MKVSource::processTitleMetadata(unsigned int) {}

}  // namespace KVL
