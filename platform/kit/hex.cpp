// Hexadecimal digits to bytes and back.

#include "kit/hex.h"

namespace kit {

int HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

std::optional<std::string> DecodeHex(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  bytes.reserve(digits.size() / 2);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const int high = HexDigit(digits[i]);
    const int low = HexDigit(digits[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back(static_cast<char>(high * 16 + low));
  }
  return bytes;
}

std::string EncodeHex(std::span<const std::uint8_t> bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string digits;
  digits.reserve(bytes.size() * 2);
  for (const std::uint8_t byte : bytes) {
    digits.push_back(kDigits[byte >> 4]);
    digits.push_back(kDigits[byte & 0x0F]);
  }
  return digits;
}

}  // namespace kit
