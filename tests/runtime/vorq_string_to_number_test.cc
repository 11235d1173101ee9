#include "runtime/text/vorq_string_to_number.h"

#include <stdint.h>

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

// Every text-to-number function of one type must agree on each case.
template <typename Number>
struct Family {
  int (*functions[4])(const char*, Number*);
};

template <typename Number>
void ExpectParses(const Family<Number>& family,
                  const char* text,
                  Number expected) {
  for (auto parse : family.functions) {
    Number value{};
    EXPECT_EQ(0, parse(text, &value)) << text;
    EXPECT_EQ(expected, value) << text;
  }
}

const Family<int32_t> kI = {
    {VorQStringToI, VorQStringExToI, VorQStringCharToI, VorQStringExCharToI}};
const Family<uint32_t> kUI = {{VorQStringToUI, VorQStringExToUI,
                               VorQStringCharToUI, VorQStringExCharToUI}};
const Family<int64_t> kI64 = {{VorQStringToI64, VorQStringExToI64,
                               VorQStringCharToI64, VorQStringExCharToI64}};
const Family<uint64_t> kUI64 = {{VorQStringToUI64, VorQStringExToUI64,
                                 VorQStringCharToUI64, VorQStringExCharToUI64}};
const Family<double> kF = {
    {VorQStringToF, VorQStringExToF, VorQStringCharToF, VorQStringExCharToF}};

TEST(VorQStringToNumber, ThirtyTwoBitsSaturateAtTheirOwnLimits) {
  ExpectParses(kI, "  -42abc", -42);
  ExpectParses(kI, "abc", 0);
  ExpectParses(kI, "+7", 7);
  ExpectParses(kI, "2147483647", INT32_MAX);
  ExpectParses(kI, "2147483648", INT32_MAX);
  ExpectParses(kI, "99999999999", INT32_MAX);
  ExpectParses(kI, "-2147483648", INT32_MIN);
  ExpectParses(kI, "-99999999999999999999999", INT32_MIN);
  ExpectParses(kUI, "4294967295", UINT32_MAX);
  ExpectParses(kUI, "4294967296", UINT32_MAX);
  ExpectParses(kUI, "99999999999999999999999", UINT32_MAX);
  ExpectParses(kUI, "-1", UINT32_MAX);
  ExpectParses(kUI, " -4294967295", 1u);
  ExpectParses(kUI, "-4294967296", UINT32_MAX);
  ExpectParses(kUI, "-0", 0u);
}

TEST(VorQStringToNumber, SixtyFourBitsAndDoubles) {
  ExpectParses(kI64, "-9223372036854775808", INT64_MIN);
  ExpectParses(kI64, "9223372036854775808", INT64_MAX);
  ExpectParses(kUI64, "18446744073709551615", UINT64_MAX);
  ExpectParses(kUI64, "18446744073709551616", UINT64_MAX);
  ExpectParses(kUI64, "-1", UINT64_MAX);
  ExpectParses(kF, "1.5e3", 1500.0);
  ExpectParses(kF, "x", 0.0);
}

TEST(VorQStringToNumber, NullArgumentsGiveMinusTwo) {
  int32_t value = 5;
  for (auto parse : kI.functions) {
    EXPECT_EQ(-2, parse(nullptr, &value));
    EXPECT_EQ(-2, parse("1", nullptr));
  }
  EXPECT_EQ(5, value);
}

TEST(VorQStringToNumber, CloneFormsSeeTooLongTextAsEmpty) {
  std::string too_long(kVorQStringLimit, ' ');
  too_long.replace(too_long.size() - 2, 2, "12");
  int32_t value = -1;
  EXPECT_EQ(0, VorQStringToI(too_long.c_str(), &value));
  EXPECT_EQ(0, value);
  EXPECT_EQ(0, VorQStringCharToI(too_long.c_str(), &value));
  EXPECT_EQ(12, value);
}

TEST(VorQStringToNumber, CloneFailureGivesMinusTwo) {
  MemoryHandle arena = VorQMemInit(64);
  ASSERT_NE(0u, arena);
  VorQStringMemSet(arena);
  const std::string big(100, '1');
  int64_t value = 0;
  EXPECT_EQ(-2, VorQStringToI64(big.c_str(), &value));
  EXPECT_EQ(0, VorQStringToI64("42", &value));
  EXPECT_EQ(42, value);
  VorQStringMemSet(0);
  VorQMemDeInit(arena);
}

}  // namespace
