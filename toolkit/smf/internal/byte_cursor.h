// A bounds-checked position in the bytes of a MIDI file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "toolkit/error.h"

namespace zuna_toolkit::smf {

/// An error at an offset in bytes; `problem` is without the place.
inline Error DamageAt(ErrorCode code, std::size_t offset, const std::string& problem,
                      const std::string& remedy) {
  ErrorParts parts;
  parts.problem = problem + " (offset " + std::to_string(offset) + ")";
  parts.remedy = remedy;
  parts.offset = offset;
  return {code, std::move(parts)};
}

/// Walks through a part of a file. Every read is checked against the bytes that remain.
class ByteCursor {
 public:
  /// `part` begins `offset` bytes into the file.
  ByteCursor(std::span<const std::uint8_t> part, std::size_t offset) : part_(part), start_(offset) {}

  bool empty() const { return at_ == part_.size(); }
  std::size_t left() const { return part_.size() - at_; }
  /// The position in the file.
  std::size_t offset() const { return start_ + at_; }

  std::uint8_t Peek() const {
    Need(1);
    return part_[at_];
  }

  std::uint8_t Byte() {
    const std::uint8_t byte = Peek();
    ++at_;
    return byte;
  }

  /// A big-endian number of `count` bytes, at most 4.
  std::uint32_t Number(int count) {
    std::uint32_t value = 0;
    while (count-- > 0) value = value << 8 | Byte();
    return value;
  }

  /// A variable-length quantity of at most 4 bytes.
  std::uint32_t Quantity() {
    std::uint32_t value = 0;
    for (int count = 0; count < 4; ++count) {
      const std::uint8_t byte = Byte();
      value = value << 7 | (byte & 0x7F);
      if (byte < 0x80) return value;
    }
    Fail("a variable-length quantity has more than 4 bytes");
  }

  std::span<const std::uint8_t> Take(std::size_t count) {
    Need(count);
    at_ += count;
    return part_.subspan(at_ - count, count);
  }

  /// Throws Error for damage found here.
  [[noreturn]] void Fail(const std::string& what, ErrorCode code = ErrorCode::kBadContent) const {
    throw DamageAt(code, offset(), what,
                   "the file is damaged: export it again from the program that made it");
  }

 private:
  void Need(std::size_t count) const {
    if (count > left()) {
      Fail("truncated: " + std::to_string(count) + " bytes needed, " + std::to_string(left()) + " left",
           ErrorCode::kCutOff);
    }
  }

  std::span<const std::uint8_t> part_;
  std::size_t start_;
  std::size_t at_ = 0;
};

}  // namespace zuna_toolkit::smf
