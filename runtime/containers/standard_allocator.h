#ifndef RUNTIME_CONTAINERS_STANDARD_ALLOCATOR_H_
#define RUNTIME_CONTAINERS_STANDARD_ALLOCATOR_H_

namespace KVL {

// The engine's allocator: every container carries a pointer to the allocator
// that made its memory, so a buffer made on one side of the module border is
// freed by the same side. Counts are elements, not bytes.
template <typename T>
class StandardAllocator {
 public:
  virtual ~StandardAllocator() = default;
  virtual T* New(unsigned long count) { return new T[count]; }
  virtual void Delete(T* p) { delete[] p; }
};

}  // namespace KVL

#endif  // RUNTIME_CONTAINERS_STANDARD_ALLOCATOR_H_
