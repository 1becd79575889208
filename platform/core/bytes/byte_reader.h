#pragma once

// Reading the fields of a binary file in memory (docs/format-1.md).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/core/bytes/coding.h"

namespace zuna_core {

/// The path of the field that is being read, for messages. A level that has not been entered is absent.
struct FieldPath {
  std::optional<std::string> song;     ///< its number
  std::optional<std::uint16_t> voice;  ///< its track number
  std::string_view list;               ///< the name of the list; empty outside of lists
  std::size_t index = 0;               ///< in the list
};

/// What is wrong where there is no valid variable-length integer.
inline constexpr const char* kNoVarint = "expected a variable-length integer in its shortest form";

/// Reads numbers and bytes out of a file in memory and never beyond its end. Every read takes the name of its
/// field; a failure throws cmn::DataError with the path, the field and the offset from the beginning of the
/// file, as in: song "12a", voice 3, messages[7].time: … (at byte 4711).
class ByteReader {
 public:
  /// Reads `bytes` from `offset` on.
  ByteReader(std::string_view bytes, std::size_t offset)
      : begin_(bytes.data()), next_(begin_ + offset), end_(begin_ + bytes.size()) {}

  FieldPath path;

  std::size_t remaining() const { return static_cast<std::size_t>(end_ - next_); }

  /// Where the next read begins, from the beginning of the file.
  std::uint64_t offset() const { return static_cast<std::uint64_t>(next_ - begin_); }

  /// A number of `size` bytes, lowest first.
  std::uint64_t Fixed(std::size_t size, std::string_view field) { return GetFixed(Take(size, field), size); }

  /// A variable-length integer of at most `max`.
  std::uint64_t Varint(std::uint64_t max, std::string_view field);

  /// The next `size` bytes.
  const char* Take(std::size_t size, std::string_view field) {
    if (remaining() < size) FailShort(size, field);
    const char* bytes = next_;
    next_ += size;
    return bytes;
  }

  /// Fails unless `count` entries of at least `min_size` bytes each fit into the remaining bytes, so that
  /// memory may be reserved for them. Returns `count`.
  std::size_t Entries(std::uint32_t count, std::size_t min_size, std::string_view field);

  /// Fails when bytes are left.
  void ExpectEnd();

  /// For a loop that reads by pointers of its own: where it begins, where the bytes end, where it stopped.
  const char* next() const { return next_; }
  const char* end() const { return end_; }
  void MoveTo(const char* next) { next_ = next; }

  [[noreturn]] void Fail(std::string_view field, const std::string& problem) const;

 private:
  [[noreturn]] void FailShort(std::size_t size, std::string_view field) const;

  const char* begin_;
  const char* next_;
  const char* end_;
};

}  // namespace zuna_core
