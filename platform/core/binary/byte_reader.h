#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/core/binary/coding.h"

namespace zuna_core {

/// What is being read, for messages; each level is absent until it is known.
struct Place {
  std::optional<std::string> song;     ///< its number
  std::optional<std::uint16_t> voice;  ///< its track number
  const char* list = nullptr;
  std::size_t index = 0;  ///< in the list
};

/// What is wrong where a variable-length integer is due.
inline constexpr const char* kNoVarint = "no variable-length integer in its shortest form stands here";

/// Reads numbers and bytes out of a file in memory and never beyond its end. Every read takes the name of its
/// field; a failure throws cmn::DataError with the place, the field and the offset from the beginning of the
/// file, as in: song "12a", voice 3, messages[7].time: … (at byte 4711).
class ByteReader {
 public:
  /// Reads `bytes` of which the first `offset` have been dealt with.
  ByteReader(std::string_view bytes, std::size_t offset)
      : begin_(bytes.data()), next_(begin_ + offset), end_(begin_ + bytes.size()) {}

  Place place;

  std::size_t remaining() const { return static_cast<std::size_t>(end_ - next_); }

  /// A number of `size` bytes, lowest first.
  std::uint64_t Fixed(std::size_t size, const char* field) { return GetFixed(Take(size, field), size); }
  std::uint8_t U8(const char* field) { return static_cast<std::uint8_t>(Fixed(1, field)); }
  std::uint16_t U16(const char* field) { return static_cast<std::uint16_t>(Fixed(2, field)); }
  std::uint32_t U32(const char* field) { return static_cast<std::uint32_t>(Fixed(4, field)); }

  /// A variable-length integer of at most `max`.
  std::uint64_t Varint(std::uint64_t max, const char* field);
  std::uint8_t Varint8(const char* field) { return static_cast<std::uint8_t>(Varint(0xFF, field)); }
  std::uint16_t Varint16(const char* field) { return static_cast<std::uint16_t>(Varint(0xFFFF, field)); }
  std::uint32_t Varint32(const char* field) { return static_cast<std::uint32_t>(Varint(0xFFFFFFFF, field)); }

  /// The next `size` bytes.
  const char* Take(std::size_t size, const char* field);
  std::string Text(std::size_t size, const char* field) { return std::string(Take(size, field), size); }

  /// Fails unless `count` entries of at least `min_size` bytes each can stand in the bytes that remain, so
  /// that memory may be reserved for them. Returns `count`.
  std::size_t Entries(std::uint32_t count, std::size_t min_size, const char* field);

  /// Fails when bytes are left.
  void ExpectEnd();

  /// For a loop that reads by pointers of its own: where it begins, where the bytes end, where it stopped.
  const char* next() const { return next_; }
  const char* end() const { return end_; }
  void MoveTo(const char* next) { next_ = next; }

  [[noreturn]] void Fail(const char* field, const std::string& what) const;

 private:
  const char* begin_;
  const char* next_;
  const char* end_;
};

}  // namespace zuna_core
