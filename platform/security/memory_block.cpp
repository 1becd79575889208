#include "platform/security/memory_block.h"

#include <new>

namespace zuna_security {

void MemoryBlock::Grow(std::size_t capacity) {
  if (capacity <= capacity_) return;
  void* const grown = std::realloc(data_.get(), capacity);
  if (grown == nullptr) throw std::bad_alloc();
  (void)data_.release();  // realloc has freed or reused it
  data_.reset(static_cast<std::uint8_t*>(grown));
  capacity_ = capacity;
}

}  // namespace zuna_security
