#ifndef RUNTIME_CONTAINERS_LIST_H_
#define RUNTIME_CONTAINERS_LIST_H_

#include "runtime/containers/standard_allocator.h"

namespace KVL {

template <typename T>
struct Node {
  T value;
  Node* next;
};

// The engine's singly linked list. Nodes come one at a time from the list's
// allocator, which is also the one that frees them.
template <typename T, typename Alloc = StandardAllocator<Node<T>>>
class List {
 public:
  explicit List(Alloc* allocator = getDefaultAllocator()) : allocator_(allocator) {}
  List(const List& other) : List() { appendAll(other); }
  List& operator=(const List& other) {
    if (this != &other) {
      clear();
      appendAll(other);
    }
    return *this;
  }
  ~List() { clear(); }

  static Alloc* getDefaultAllocator() {
    static Alloc allocator;
    return &allocator;
  }

  void append(T value) {
    Node<T>* node = allocator_->New(1);
    node->value = value;
    node->next = nullptr;
    if (head_)
      tail_->next = node;
    else
      head_ = node;
    tail_ = node;
    ++count_;
  }

  void clear() {
    for (Node<T>* node = head_; node;) {
      Node<T>* next = node->next;
      allocator_->Delete(node);
      node = next;
    }
    head_ = tail_ = nullptr;
    count_ = 0;
  }

  const Node<T>* head() const { return head_; }
  const Node<T>* tail() const { return tail_; }
  unsigned int count() const { return count_; }

 private:
  void appendAll(const List& other) {
    for (const Node<T>* node = other.head_; node; node = node->next) append(node->value);
  }

  Node<T>* head_ = nullptr;
  Node<T>* tail_ = nullptr;
  unsigned int count_ = 0;
  Alloc* allocator_;
};

}  // namespace KVL

#endif  // RUNTIME_CONTAINERS_LIST_H_
