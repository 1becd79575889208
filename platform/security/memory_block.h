#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

namespace zuna_security {

/// One uninitialised block from malloc(3), which can grow without being copied where realloc(3) manages to
/// move its pages. Does not wipe what it holds.
class MemoryBlock {
 public:
  MemoryBlock() = default;

  /// Throws std::bad_alloc.
  explicit MemoryBlock(std::size_t capacity) { Grow(capacity); }

  MemoryBlock(MemoryBlock&& other) noexcept { Swap(other); }
  MemoryBlock& operator=(MemoryBlock&& other) noexcept {
    MemoryBlock moved(std::move(other));
    Swap(moved);
    return *this;
  }

  /// Null while the capacity is 0.
  std::uint8_t* data() const { return data_.get(); }

  /// In bytes.
  std::size_t capacity() const { return capacity_; }

  /// Makes room for `capacity` bytes and keeps what was there; the block may move. Never shrinks. Throws
  /// std::bad_alloc and leaves the block as it was.
  void Grow(std::size_t capacity);

 private:
  struct Free {
    void operator()(std::uint8_t* memory) const { std::free(memory); }
  };

  void Swap(MemoryBlock& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(capacity_, other.capacity_);
  }

  std::unique_ptr<std::uint8_t, Free> data_;
  std::size_t capacity_ = 0;
};

}  // namespace zuna_security
