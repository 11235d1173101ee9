#include "runtime/text/vorq_string_hex.h"

#include <stdint.h>

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

constexpr uint64_t kUntouched = 0xAAAA;

int ThroughHeap(const char* text, uint64_t* value) {
  return VorQHexStringExToUI(text, value, 0);
}

TEST(VorQHexString, Table) {
  const std::string too_long(kVorQStringLimit, 'f');
  struct Case {
    const char* text;
    int result;
    uint64_t value;
  } cases[] = {
      {"0x1F", 0, 31},
      {"1F", 0, 31},
      {"zzx1f", 0, 31},
      {"Xff", 0, 255},
      {"", 0, 0},
      {too_long.c_str(), 0, 0},
      {"ffffffffffffffffff", 0, UINT64_MAX},
      {"1123456789abcdef0", 0, 0x123456789abcdef0},
      {"1G", -1, kUntouched},
      {"-5", -1, kUntouched},
      {"12 ", -1, kUntouched},
  };
  for (const Case& c : cases) {
    for (auto parse :
         {VorQHexStringToUI, VorQStringExHexCharToUI, ThroughHeap}) {
      uint64_t value = kUntouched;
      EXPECT_EQ(c.result, parse(c.text, &value)) << c.text;
      EXPECT_EQ(c.value, value) << c.text;
    }
  }
}

TEST(VorQHexString, NullAndExhaustionGiveMinusTwo) {
  uint64_t value = 0;
  EXPECT_EQ(-2, VorQHexStringToUI(nullptr, &value));
  EXPECT_EQ(-2, VorQHexStringToUI("1", nullptr));
  EXPECT_EQ(-2, VorQStringExHexCharToUI(nullptr, &value));
  MemoryHandle arena = VorQMemInit(64);
  ASSERT_NE(0u, arena);
  EXPECT_EQ(-2,
            VorQHexStringExToUI(std::string(100, 'f').c_str(), &value, arena));
  VorQMemDeInit(arena);
}

}  // namespace
