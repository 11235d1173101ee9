#include "runtime/text/vorq_string_to_number.h"

#include <stdint.h>

#include <string>

#include <gtest/gtest.h>

#include "runtime/memory/vorq_mem.h"

namespace {

// Every function of one type, with clone or without, agrees on each case.
template <typename Number>
using Parser = int (*)(const char*, Number*);

template <typename Number>
void ExpectParses(const Parser<Number> (&family)[4],
                  const char* text,
                  Number expected) {
  for (Parser<Number> parse : family) {
    Number value{};
    EXPECT_EQ(0, parse(text, &value)) << text;
    EXPECT_EQ(expected, value) << text;
  }
}

const Parser<int32_t> kI[] = {VorQStringToI, VorQStringExToI, VorQStringCharToI,
                              VorQStringExCharToI};
const Parser<uint32_t> kUI[] = {VorQStringToUI, VorQStringExToUI,
                                VorQStringCharToUI, VorQStringExCharToUI};
const Parser<int64_t> kI64[] = {VorQStringToI64, VorQStringExToI64,
                                VorQStringCharToI64, VorQStringExCharToI64};
const Parser<uint64_t> kUI64[] = {VorQStringToUI64, VorQStringExToUI64,
                                  VorQStringCharToUI64, VorQStringExCharToUI64};
const Parser<double> kF[] = {VorQStringToF, VorQStringExToF, VorQStringCharToF,
                             VorQStringExCharToF};

TEST(VorQStringToNumber, ThirtyTwoBitsSaturateAtTheirOwnLimits) {
  ExpectParses(kI, "  -42abc", -42);
  ExpectParses(kI, "abc", 0);
  ExpectParses(kI, "2147483648", INT32_MAX);
  ExpectParses(kI, "-2147483648", INT32_MIN);
  ExpectParses(kI, "-99999999999999999999999", INT32_MIN);
  ExpectParses(kUI, "4294967296", UINT32_MAX);
  ExpectParses(kUI, "-1", UINT32_MAX);
  ExpectParses(kUI, " -4294967295", 1u);
  ExpectParses(kUI, "-4294967296", UINT32_MAX);
}

TEST(VorQStringToNumber, SixtyFourBitsAndDoubles) {
  ExpectParses(kI64, "-9223372036854775808", INT64_MIN);
  ExpectParses(kI64, "9223372036854775808", INT64_MAX);
  ExpectParses(kUI64, "18446744073709551616", UINT64_MAX);
  ExpectParses(kUI64, "-1", UINT64_MAX);
  ExpectParses(kF, "1.5e3", 1500.0);
}

TEST(VorQStringToNumber, NullArgumentsGiveMinusTwo) {
  int32_t value = 5;
  for (Parser<int32_t> parse : kI) {
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
  // A clone that can't be made.
  MemoryHandle arena = VorQMemInit(64);
  ASSERT_NE(0u, arena);
  VorQStringMemSet(arena);
  EXPECT_EQ(-2,
            VorQStringToI(too_long.c_str() + too_long.size() - 100, &value));
  VorQStringMemSet(0);
  VorQMemDeInit(arena);
}

}  // namespace
