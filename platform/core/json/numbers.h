#pragma once

// Numbers as decimal text.

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

namespace zuna_json {

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

/// Puts a byte as a decimal number. Writes 4 bytes whatever the number needs; returns the end of the number.
inline char* PutDecimal(char* to, std::uint8_t value) {
  const ByteText& text = kByteTexts[value];
  std::memcpy(to, text.digits.data(), text.digits.size());
  return to + text.size;
}

/// The longest decimal text of a 32-bit number, without and with a sign.
inline constexpr std::size_t kMaxDecimalSize = 10;
inline constexpr std::size_t kMaxSignedDecimalSize = 1 + kMaxDecimalSize;

/// Puts a number into kMaxDecimalSize bytes; returns its end.
inline char* PutDecimal(char* to, std::uint32_t value) {
  return std::to_chars(to, to + kMaxDecimalSize, value).ptr;
}

/// Puts a number into kMaxSignedDecimalSize bytes; returns its end.
inline char* PutDecimal(char* to, std::int32_t value) {
  return std::to_chars(to, to + kMaxSignedDecimalSize, value).ptr;
}

/// The shortest decimal text that ParseFloat() reads as this finite float, in the form of a JSON number.
/// Minus zero is "-0.0", which other programs take for a float, not for the integer 0.
std::string FloatText(float value);

/// The float nearest to the number that a JSON text spells, halves to even; it is rounded once, from the
/// decimal digits. None where the number lies beyond the floats.
std::optional<float> ParseFloat(const std::string& number);

}  // namespace zuna_json
