#pragma once

// The scalars and strings that all legacy formats are made of: little-endian, without alignment or padding.
// docs/format-0.md draws them. A short read throws nothing by itself: the field keeps what was
// delivered, and the stream is left in its fail state.

#include <cmath>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "format_converter/version0/primitives/stream_position.h"

namespace version0 {

std::uint8_t get_u8(std::istream& is);
void put_u8(std::ostream& os, std::uint8_t value);

std::uint16_t get_u16(std::istream& is);
void put_u16(std::ostream& os, std::uint16_t value);

std::uint32_t get_u32(std::istream& is);
void put_u32(std::ostream& os, std::uint32_t value);

/// IEEE 754 single precision.
float get_float(std::istream& is);
void put_float(std::ostream& os, float value);

/// One length byte, then as many bytes of text.
/// Throws std::length_error ("basic_string") where the stream has no length byte left.
std::string get_string(std::istream& is);
/// Throws std::length_error before the length byte is written when the text has 256 bytes or more.
void put_string(std::ostream& os, const std::string& text);

/// The read position (tellg), modulo 2^32; 0xFFFFFFFF on a failed stream. A stream that has met its end fails
/// when it is asked for its position, which throws std::ios_base::failure where its exception mask says so.
std::uint32_t istream_tellg(std::istream& is);

/// Whether the read position is at `end` or past it. A position that cannot be taken ends every list, so a
/// stream's failure counts as the end.
bool at_end(std::istream& is, std::uint32_t end);

/// Puts `value` over the four bytes at `position` and goes on at `end`. A failed seek sets the stream's fail
/// state.
void patch_u32(std::ostream& os, std::uint32_t position, std::uint32_t value, std::uint32_t end);

/// A 32-bit length in front of a body that is not written yet.
class LengthField {
 public:
  /// Writes a placeholder.
  explicit LengthField(std::ostream& os);

  /// Puts the number of bytes that were written since into the placeholder, as patch_u32() does.
  void patch(std::ostream& os) const;

 private:
  std::uint32_t position_;
};

/// `value` truncated toward zero; 0 for what is not a number or does not fit.
inline std::int64_t truncate(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  return value >= -kLimit && value < kLimit ? static_cast<std::int64_t>(value) : 0;
}

/// `value` rounded half away from zero. The addend is the largest double below one half: with one half
/// itself, 0.49999999999999994 would round up.
inline std::int64_t round_half_away(double value) {
  return truncate(value + std::copysign(0.49999999999999994, value));
}

}  // namespace version0
