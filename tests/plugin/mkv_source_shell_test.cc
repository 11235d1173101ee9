#include "gtest/gtest.h"
#include "plugin/mkv_source.h"

namespace KVL {
namespace {

// kvl-play's runs reach both interfaces by their names; a near miss reaches none.
TEST(MKVSourceShell, RefusesOtherInterfaceNamesAndANullResult) {
  MKVSource source(nullptr);
  void* result = &source;
  const vorq_string<char> nearMiss("com.vorq.streamengine.interface.container ");
  EXPECT_EQ(3, source.getInterface(nearMiss, &result));
  EXPECT_EQ(nullptr, result);
  EXPECT_EQ(3, source.getInterface(vorq_string<char>(nullptr), &result));
  EXPECT_EQ(3, source.getInterface(vorq_string<char>("com.vorq.streamengine.interface.container"),
                                   nullptr));
}

struct TracedReader : IMkvReader {
  ~TracedReader() override { ++*deletions; }
  int Open(const char*) override { return -1; }
  void Close() override { ++closes; }
  int Read(long long, long, unsigned char*) override { return -1; }
  int Length(long long*, long long*) override { return -1; }
  int* deletions = nullptr;
  int closes = 0;
};

// The second constructor owns its reader; an object never opened closes and ends without harm.
TEST(MKVSourceShell, OwnsItsReaderAndEndsAtTheLastRelease) {
  int deletions = 0;
  auto* reader = new TracedReader;
  reader->deletions = &deletions;
  Plugin* plugin = new MKVSource(nullptr, reader);
  EXPECT_EQ(0, static_cast<MKVSource*>(plugin)->close());
  EXPECT_EQ(1, reader->closes);
  plugin->release();
  EXPECT_EQ(1, deletions);
}

}  // namespace
}  // namespace KVL
