#include "cli/base/text.h"

#include <algorithm>
#include <cstdint>

#include "kit/format.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

bool IsBetween(std::uint8_t byte, std::uint8_t low, std::uint8_t high) { return byte >= low && byte <= high; }

/// The least and greatest second byte after `lead`: no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsSecondByte(std::uint8_t lead, std::uint8_t byte) {
  switch (lead) {
    case 0xE0:
      return IsBetween(byte, 0xA0, 0xBF);
    case 0xED:
      return IsBetween(byte, 0x80, 0x9F);
    case 0xF0:
      return IsBetween(byte, 0x90, 0xBF);
    case 0xF4:
      return IsBetween(byte, 0x80, 0x8F);
    default:
      return IsBetween(byte, 0x80, 0xBF);
  }
}

std::size_t LengthFromLead(std::uint8_t lead) {
  if (lead < 0x80) return 1;
  if (IsBetween(lead, 0xC2, 0xDF)) return 2;
  if (IsBetween(lead, 0xE0, 0xEF)) return 3;
  if (IsBetween(lead, 0xF0, 0xF4)) return 4;
  return 0;
}

/// C0, DEL and, written in two bytes, C1.
bool IsControl(std::string_view character) {
  const auto first = static_cast<std::uint8_t>(character[0]);
  if (character.size() == 1) return first < 0x20 || first == 0x7F;
  return first == 0xC2 && static_cast<std::uint8_t>(character[1]) < 0xA0;
}

void AppendEscaped(std::string& out, const char* format, std::string_view bytes) {
  for (const char byte : bytes)
    out += kit::format(format, static_cast<unsigned>(static_cast<std::uint8_t>(byte)));
}

}  // namespace

std::size_t Utf8Length(std::string_view text) {
  if (text.empty()) return 0;
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::size_t length = LengthFromLead(byte(0));
  if (length < 2) return length;
  if (text.size() < length || !IsSecondByte(byte(0), byte(1))) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!IsBetween(byte(i), 0x80, 0xBF)) return 0;
  }
  return length;
}

std::string Printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    const std::string_view character = text.substr(0, length == 0 ? 1 : length);
    if (length == 0 || IsControl(character)) {
      AppendEscaped(out, "\\x%02x", character);
    } else {
      out += character;
    }
    text.remove_prefix(character.size());
  }
  return out;
}

std::string PrintableLines(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find_first_of("\n\t"), text.size());
    out += Printable(text.substr(0, length));
    if (length < text.size()) out += text[length];
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return out;
}

std::string JsonString(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    const std::string_view character = text.substr(0, length == 0 ? 1 : length);
    if (length == 0) {
      out += kReplacement;
    } else if (character == "\"" || character == "\\") {
      (out += '\\') += character;
    } else if (length == 1 && IsControl(character)) {
      AppendEscaped(out, "\\u%04x", character);
    } else {
      out += character;
    }
    text.remove_prefix(character.size());
  }
  return out + '"';
}

}  // namespace zuna_cli
