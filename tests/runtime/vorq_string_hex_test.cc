#include "runtime/text/vorq_string_hex.h"

#include <stdint.h>

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

constexpr uint64_t kUntouched = 0xAAAA;

TEST(VorQHexString, Table) {
  const std::string too_long(kVorQStringLimit, 'f');
  struct Case {
    const char* text;
    int result;
    uint64_t value;
  } cases[] = {
      {"0x1F", 0, 31},
      {"1F", 0, 31},
      {"x1F", 0, 31},
      {"zzx1f", 0, 31},
      {"Xff", 0, 255},
      {"x", 0, 0},
      {"", 0, 0},
      {"ffffffffffffffffff", 0, UINT64_MAX},
      {"123456789abcdef0", 0, 0x123456789abcdef0},
      {"1123456789abcdef0", 0, 0x123456789abcdef0},
      {too_long.c_str(), 0, 0},
      {"1G", -1, kUntouched},
      {"-5", -1, kUntouched},
      {"12 ", -1, kUntouched},
  };
  for (const Case& c : cases) {
    auto with_handle = [](const char* t, uint64_t* v) {
      return VorQHexStringExToUI(t, v, 0);
    };
    for (int (*parse)(const char*, uint64_t*) :
         {VorQHexStringToUI, VorQStringExHexCharToUI,
          static_cast<int (*)(const char*, uint64_t*)>(with_handle)}) {
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
  const std::string big(100, 'f');
  EXPECT_EQ(-2, VorQHexStringExToUI(big.c_str(), &value, arena));
  EXPECT_EQ(0, VorQHexStringExToUI("ff", &value, arena));
  EXPECT_EQ(255u, value);
  VorQMemDeInit(arena);
}

}  // namespace
