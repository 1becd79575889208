#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zuna_core {

/// The decimal text of a byte.
struct ByteText {
  std::array<char, 4> digits;
  std::uint8_t size;
};

/// The decimal texts of 0 to 255.
constexpr std::array<ByteText, 256> MakeByteTexts() {
  std::array<ByteText, 256> texts{};
  for (unsigned value = 0; value < texts.size(); ++value) {
    ByteText& text = texts[value];
    if (value >= 100) text.digits[text.size++] = static_cast<char>('0' + value / 100);
    if (value >= 10) text.digits[text.size++] = static_cast<char>('0' + value / 10 % 10);
    text.digits[text.size++] = static_cast<char>('0' + value % 10);
  }
  return texts;
}
inline constexpr std::array<ByteText, 256> kByteTexts = MakeByteTexts();

/// Puts a byte as a decimal number. Writes 4 bytes whatever the number needs; returns its end.
inline char* PutDecimal(char* to, std::uint8_t value) {
  const ByteText& text = kByteTexts[value];
  std::memcpy(to, text.digits.data(), text.digits.size());
  return to + text.size;
}

/// The longest decimal text of a 32-bit number.
inline constexpr std::size_t kMaxDecimalSize = 10;

/// Puts a number into kMaxDecimalSize bytes; returns its end.
inline char* PutDecimal(char* to, std::uint32_t value) {
  return std::to_chars(to, to + kMaxDecimalSize, value).ptr;
}

}  // namespace zuna_core
