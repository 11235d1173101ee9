#include <map>
#include <string>

#include "gtest/gtest.h"
#include "runtime/containers/list.h"
#include "runtime/containers/vorq_string.h"

namespace KVL {
namespace {

using Text = vorq_string<unsigned char>;

Text T(const char* text) {
  return Text(reinterpret_cast<const unsigned char*>(text));
}

// Counts what it hands out, so tests see which allocator a string uses.
template <typename T>
class CountingAllocator : public StandardAllocator<T> {
 public:
  T* New(unsigned long count) override {
    ++made;
    return StandardAllocator<T>::New(count);
  }
  void Delete(T* p) override {
    ++freed;
    StandardAllocator<T>::Delete(p);
  }
  int made = 0;
  int freed = 0;
};

TEST(VorqString, NullAndEmptyTextsDiffer) {
  const vorq_string<char> none(nullptr);
  const vorq_string<char> empty("");
  EXPECT_EQ(nullptr, none.data());
  EXPECT_EQ(0u, none.length());
  ASSERT_NE(nullptr, empty.data());
  EXPECT_EQ('\0', empty.data()[0]);
  EXPECT_EQ(none.toStlString(), empty.toStlString());
  EXPECT_TRUE(none.compare(nullptr));
  EXPECT_TRUE(none.compare(""));
  EXPECT_TRUE(none == empty);
}

TEST(VorqString, AssignmentKeepsTheTargetsAllocator) {
  CountingAllocator<char> counting;
  vorq_string<char> target("old", &counting);
  target = vorq_string<char>("new text");
  EXPECT_EQ(&counting, target.allocator());
  EXPECT_STREQ("new text", target.data());
  EXPECT_EQ(8u, target.length());
  EXPECT_EQ(2, counting.made);
  EXPECT_EQ(1, counting.freed);
  target.assign(vorq_string<char>(nullptr));
  EXPECT_EQ(nullptr, target.data());
  EXPECT_EQ(0u, target.length());
  EXPECT_EQ(2, counting.freed);
}

TEST(VorqString, ACopyTakesTheDefaultAllocator) {
  CountingAllocator<char> counting;
  const vorq_string<char> original("abc", &counting);
  const vorq_string<char> copy(original);
  EXPECT_EQ(vorq_string<char>::getDefaultAllocator(), copy.allocator());
  const vorq_string<char> placed(original, &counting);
  EXPECT_EQ(&counting, placed.allocator());
  EXPECT_EQ(2, counting.made);
}

struct OrderCase {
  const char* a;
  const char* b;
  bool aBeforeB;  // a < b
};

// The order is descending: a < b when b precedes a in byte order.
TEST(VorqString, LessThanIsDescendingByteOrder) {
  const OrderCase cases[] = {
      {"abc", "abd", false},  {"abd", "abc", true},  {"abcd", "abc", true},
      {"abc", "abcd", false}, {"abc", "abc", false}, {"\x7F", "\x80", false},
      {"\x80", "\x7F", true}, {"", "a", false},      {"a", "", true},
  };
  for (const OrderCase& c : cases)
    EXPECT_EQ(c.aBeforeB, T(c.a) < T(c.b)) << c.a << " " << c.b;

  std::map<Text, int> map;
  map[T("b")] = 2;
  map[T("c")] = 3;
  map[T("a")] = 1;
  std::string order;
  for (const auto& entry : map)
    order += static_cast<char>(entry.first.data()[0]);
  EXPECT_EQ("cba", order);
}

// Nodes link in order, a copy keeps its own, and all come from and go back
// to the list's allocator.
TEST(List, AppendCopyAndClear) {
  CountingAllocator<Node<int>> counting;
  {
    List<int, CountingAllocator<Node<int>>> list(&counting);
    EXPECT_EQ(nullptr, list.head());
    for (int i = 7; i < 12; ++i) list.append(i);
    EXPECT_EQ(7, list.head()->value);
    EXPECT_EQ(8, list.head()->next->value);
    EXPECT_EQ(11, list.tail()->value);
    EXPECT_EQ(nullptr, list.tail()->next);
    const List<int, CountingAllocator<Node<int>>> copy(list);
    list.clear();
    EXPECT_EQ(0u, list.count());
    EXPECT_EQ(nullptr, list.tail());
    EXPECT_EQ(5u, copy.count());
  }
  EXPECT_EQ(counting.made, counting.freed);
}

}  // namespace
}  // namespace KVL
