#pragma once

// The scalars and strings of the legacy formats: little-endian, without alignment or padding. Also the
// rounding of numbers that go into them. docs/format-0.md, "primitives", draws them. A short read throws
// nothing by itself: the field keeps the bytes that were read, and the stream is left in its fail state.

#include <array>
#include <cmath>
#include <cstdint>
#include <istream>
#include <ostream>
#include <string>

#include "format_converter/version0/primitives/stream_position.h"

namespace version0 {

std::uint8_t get_u8(std::istream& is);
void put_u8(std::ostream& os, std::uint8_t value);

std::uint16_t get_u16(std::istream& is);
void put_u16(std::ostream& os, std::uint16_t value);

std::uint32_t get_u32(std::istream& is);
void put_u32(std::ostream& os, std::uint32_t value);

/// The next bytes in one read, which takes a third of the time of a read for each field.
template <std::size_t Size>
std::array<std::uint8_t, Size> get_bytes(std::istream& is) {
  std::array<std::uint8_t, Size> bytes{};
  is.read(reinterpret_cast<char*>(bytes.data()), Size);
  return bytes;
}

/// Puts bytes in one write.
template <std::size_t Size>
void put_bytes(std::ostream& os, const std::array<std::uint8_t, Size>& bytes) {
  os.write(reinterpret_cast<const char*>(bytes.data()), Size);
}

/// The number in the four bytes at `bytes`.
///@{
inline std::uint32_t u32_in(const std::uint8_t* bytes) {
  return std::uint32_t{bytes[0]} | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 |
         std::uint32_t{bytes[3]} << 24;
}
inline void set_u32_in(std::uint8_t* bytes, std::uint32_t value) {
  for (unsigned i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}
///@}

/// IEEE 754 single precision.
float get_float(std::istream& is);
void put_float(std::ostream& os, float value);

/// One length byte, then as many bytes of text.
/// Throws std::length_error ("basic_string") when the stream ends before the length byte.
std::string get_string(std::istream& is);
/// Throws std::length_error for a text of 256 bytes or more, before the length byte is written.
void put_string(std::ostream& os, const std::string& text);

/// The read position (tellg) modulo 2^32; 0xFFFFFFFF for a failed stream. tellg fails a stream that has
/// reached its end, which throws std::ios_base::failure if the exception mask says so.
std::uint32_t istream_tellg(std::istream& is);

/// Whether the read position is at `end` or after it. A position that cannot be taken ends every list, so a
/// failure of the stream counts as the end.
bool at_end(std::istream& is, std::uint32_t end);

/// Overwrites the four bytes at `position` with `value` and moves the write position to `end`. A failed seek
/// sets the stream's fail state.
void patch_u32(std::ostream& os, std::uint32_t position, std::uint32_t value, std::uint32_t end);

/// A 32-bit length before a body that is not written yet.
class LengthField {
 public:
  /// Writes a placeholder.
  explicit LengthField(std::ostream& os);

  /// Replaces the placeholder by the number of bytes written since, as patch_u32() does.
  void patch(std::ostream& os) const;

 private:
  std::uint32_t position_;
};

/// `value` truncated toward zero; 0 for what is not a number or does not fit.
inline std::int64_t truncated(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  return value >= -kLimit && value < kLimit ? static_cast<std::int64_t>(value) : 0;
}

/// `value` rounded half away from zero. The addend is the largest double below one half: with one half
/// itself, 0.49999999999999994 would round up.
inline std::int64_t round_half_away(double value) {
  return truncated(value + std::copysign(0.49999999999999994, value));
}

}  // namespace version0
