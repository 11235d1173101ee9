#include <string>

#include "gtest/gtest.h"
#include "runtime/containers/list.h"
#include "runtime/containers/vorq_string.h"

namespace KVL {
namespace {

// Counts what it hands out, so tests see which allocator is used.
template <typename T>
struct CountingAllocator : StandardAllocator<T> {
  T* New(unsigned long count) override { return ++made, StandardAllocator<T>::New(count); }
  void Delete(T* p) override { ++freed, StandardAllocator<T>::Delete(p); }
  int made = 0, freed = 0;
};

// Null and empty text compare equal; an assignment keeps the target's allocator, a list its own.
TEST(Containers, TextsAndListsKeepTheirAllocators) {
  const vorq_string<char> none(nullptr), empty("");
  EXPECT_EQ(nullptr, none.data());
  ASSERT_NE(nullptr, empty.data());
  EXPECT_EQ('\0', empty.data()[0]);
  EXPECT_TRUE(none == empty);
  CountingAllocator<char> counting;
  vorq_string<char> target("old", &counting);
  target = vorq_string<char>("new text");
  EXPECT_EQ(&counting, target.allocator());
  EXPECT_STREQ("new text", target.data());
  EXPECT_EQ(2, counting.made);
  EXPECT_EQ(1, counting.freed);
  CountingAllocator<Node<int>> nodes;
  List<int, CountingAllocator<Node<int>>> list(&nodes);
  for (int i = 7; i < 10; ++i) list.append(i);
  EXPECT_EQ(8, list.head()->next->value);
  EXPECT_EQ(9, list.tail()->value);
  list.clear();
  EXPECT_EQ(nullptr, list.head());
  EXPECT_EQ(0u, list.count());
  EXPECT_EQ(3, nodes.freed);
}

// The order is descending: a < b when b precedes a in byte order.
TEST(VorqString, LessThanIsDescendingByteOrder) {
  const struct {
    const char *a, *b;
    bool aBeforeB;
  } cases[] = {{"abc", "abd", false}, {"abd", "abc", true}, {"abcd", "abc", true},
               {"abc", "abcd", false}, {"abc", "abc", false}, {"\x7F", "\x80", false},
               {"\x80", "\x7F", true}, {"", "a", false}, {"a", "", true}};
  using Text = vorq_string<unsigned char>;
  const auto text = [](const char* t) { return Text(reinterpret_cast<const unsigned char*>(t)); };
  for (const auto& c : cases) EXPECT_EQ(c.aBeforeB, text(c.a) < text(c.b)) << c.a << " " << c.b;
}

}  // namespace
}  // namespace KVL
