// Memory for large files. Not part of the contract with the converter.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

namespace kit {

/// One uninitialised block from malloc(3), which can grow without being copied where realloc(3) manages to
/// move its pages. Does not wipe what it holds.
class MemoryBlock {
 public:
  /// An empty block.
  MemoryBlock() = default;

  /// A block of `capacity` bytes. Throws std::bad_alloc.
  explicit MemoryBlock(std::size_t capacity) { Grow(capacity); }

  /// Takes the memory of `other`, which is empty afterwards.
  MemoryBlock(MemoryBlock&& other) noexcept { Swap(other); }

  /// Frees its own memory and takes that of `other`, which is empty afterwards.
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
  void Grow(std::size_t capacity) {
    if (capacity <= capacity_) return;
    void* const grown = std::realloc(data_.get(), capacity);
    if (grown == nullptr) throw std::bad_alloc();
    (void)data_.release();  // realloc has freed or reused it
    data_.reset(static_cast<std::uint8_t*>(grown));
    capacity_ = capacity;
  }

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

}  // namespace kit
