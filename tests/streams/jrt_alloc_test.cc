#include "streams/jrt_alloc.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace {

// A grown buffer keeps its payload, behind it the kind's zero suffix.
TEST(JrtAllocTest, PayloadAndZeroSuffix) {
  struct Case {
    int (*allocate)(unsigned char**, unsigned int);
    unsigned int zeros;
  } cases[] = {{JRTVideoAlloc, 4}, {JRTOverlayAlloc, 4}, {JRTAudioAlloc, 0}};
  for (const Case& c : cases) {
    unsigned char* buffer = nullptr;
    EXPECT_EQ(-2, c.allocate(&buffer, 0) + c.allocate(nullptr, 8));
    ASSERT_EQ(c.allocate(&buffer, 3), 0);
    std::memset(buffer, 0xAB, 3);
    ASSERT_EQ(c.allocate(&buffer, 9), 0);
    std::memset(buffer + 3, 0xCD, 6);
    EXPECT_EQ(buffer[0], 0xAB);
    for (unsigned int i = 0; i < c.zeros; ++i) EXPECT_EQ(buffer[9 + i], 0) << i;
    unsigned char* kept = buffer;
    EXPECT_EQ(c.allocate(&buffer, 0), -1);
    EXPECT_EQ(buffer, kept);
    std::free(buffer);
  }
  unsigned char* buffer = nullptr;
  ASSERT_EQ(JRTOverlayAllocSSA(&buffer, 4), 0);
  std::memcpy(buffer, "Hi!!", 4);
  ASSERT_EQ(JRTOverlayAllocSSA(&buffer, 5000), 0);  // one prefix across calls
  EXPECT_EQ(std::memcmp(buffer - 10, "Dialogue: Hi!!", 14), 0);
  EXPECT_EQ(buffer[5000], 0);
  EXPECT_EQ(JRTOverlayAllocSSA(&buffer, 0), -1);
  std::free(buffer - 10);
}

}  // namespace
