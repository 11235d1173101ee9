#include <libxml/tree.h>

#include <cstdlib>
#include <cstring>

#include "source/tag_data.h"
#include "tests/support/media_files.h"
#include "tests/support/source_harness.h"

namespace mkvtest {
namespace {

using KVL::MKVSource;

MKVSource::tagData::Slot Slot(uint32_t id, const std::string& bytes) {
  void* value = std::malloc(bytes.size() + 1);
  std::memcpy(value, bytes.c_str(), bytes.size() + 1);
  return {value, bytes.size(), id};
}

// Each child of `node` as "Name=content".
std::vector<std::string> Children(xmlNode* node) {
  std::vector<std::string> children;
  for (xmlNode* child = node->children; child; child = child->next) {
    xmlChar* content = xmlNodeGetContent(child);
    children.push_back(std::string(reinterpret_cast<const char*>(child->name)) + "=" +
                       reinterpret_cast<const char*>(content));
    xmlFree(content);
  }
  return children;
}

using MetadataTest = SourceTest;

// Known slots become children in order, each slot given up; binary values up to
// the limit are base64, larger ones a note. No tag or no node changes nothing.
TEST_F(MetadataTest, SimpleTagsBecomeChildrenOfTheMetadataDocument) {
  ASSERT_TRUE(Open(MediaPath("h264_aac"), false));
  xmlNode* root = xmlDocGetRootElement(source->metadataDocument());
  MKVSource::tagData empty = {};
  source->processSimpleTag(root, &empty);
  source->processSimpleTag(root, nullptr);
  MKVSource::tagData kept = {{Slot(KVL::kTagName, "kept")}};
  source->processSimpleTag(nullptr, &kept);
  EXPECT_NE(nullptr, kept.slots[0].value);
  std::free(kept.slots[0].value);
  EXPECT_TRUE(Children(root).empty());

  MKVSource::tagData tag = {{Slot(KVL::kTagName, "TITLE"), Slot(0x1234, "dropped"),
                             Slot(KVL::kTagString, "a & b"), Slot(KVL::kTagLanguage, "eng"),
                             Slot(KVL::kTagBinary, "Man")}};
  source->processSimpleTag(root, &tag);
  EXPECT_EQ((std::vector<std::string>{"Name=TITLE", "String=a & b", "TagLanguage=eng",
                                      "Binary=TWFu"}),
            Children(root));
  for (const auto& slot : tag.slots) EXPECT_EQ(0u, slot.size + slot.id + (slot.value != nullptr));
  for (size_t size : {size_t{150000}, size_t{150001}}) {
    MKVSource::tagData binary = {{Slot(KVL::kTagBinary, std::string(size, '\xFF'))}};
    xmlNode* node = xmlNewChild(root, nullptr, BAD_CAST "SimpleTag", nullptr);
    source->processSimpleTag(node, &binary);
    EXPECT_EQ(std::vector<std::string>{size == 150000 ? "Binary=" + std::string(200000, '_')
                                                      : "Binary=[Binary Data Omitted]"},
              Children(node));
  }
  source->cleanMetadata();
  EXPECT_EQ(nullptr, source->metadataDocument());
  source->cleanMetadata();
}

}  // namespace
}  // namespace mkvtest
