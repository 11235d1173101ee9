// A source under test with the engine objects around it: its context, a
// control object, and the media source of a file.
#ifndef MKVSOURCE_TESTS_SOURCE_SOURCE_FIXTURE_H_
#define MKVSOURCE_TESTS_SOURCE_SOURCE_FIXTURE_H_

#include <memory>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "plugin/kvl/media_source.h"
#include "plugin/kvl/plugin_context.h"
#include "plugin/mkv_source.h"
#include "tests/support/fake_control.h"
#include "tests/support/mkv_writer.h"
#include "tests/support/temp_file.h"

namespace mkvtest {

inline std::unique_ptr<KVL::MediaSource> SourceOf(const std::string& uri) {
  return std::make_unique<KVL::MediaSource>(
      KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>(uri.c_str())),
      KVL::vorq_string<unsigned char>(reinterpret_cast<const unsigned char*>("video/x-matroska")));
}

inline std::string Text(const KVL::vorq_string<unsigned char>& text) {
  const std::basic_string<unsigned char> bytes = text.toStlString();
  return std::string(bytes.begin(), bytes.end());
}

inline std::string FileUri(const std::string& path) { return "file://" + path; }

// One video track (AVC, number 1) and one audio track (AAC, number 2), two
// clusters of a key frame and an audio frame each.
MkvFile VideoAndAudioFile();

class SourceTest : public testing::Test {
 protected:
  SourceTest() : source(new KVL::MKVSource(&context)) {
    control.setContainer(source.get());
    source->init(&control, 1000);
  }
  ~SourceTest() override {
    if (session) source->closeSavedSession(session);
  }

  // Probes `path` as a file URI; the session goes to `session`.
  bool Probe(const std::string& path) {
    media = SourceOf(FileUri(path));
    return source->canPlay(*media, nullptr, &session, &refused);
  }
  // Probes and opens a file made from `file`.
  void ProbeAndOpen(const MkvFile& file) {
    ASSERT_TRUE(Probe(WriteTemp(file)));
    ASSERT_EQ(0, source->open(session));
    session = nullptr;
  }

  KVL::PluginContext context;
  std::unique_ptr<KVL::MediaSource> media;
  std::unique_ptr<KVL::MKVSource> source;
  // Destroyed before the source: it deletes the streams it still holds.
  FakeControl control;
  void* session = nullptr;
  std::vector<KVL::FormatDescriptor> refused;
};

}  // namespace mkvtest

#endif  // MKVSOURCE_TESTS_SOURCE_SOURCE_FIXTURE_H_
