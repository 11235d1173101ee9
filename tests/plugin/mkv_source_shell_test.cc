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

}  // namespace
}  // namespace KVL
