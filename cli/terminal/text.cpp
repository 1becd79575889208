// Text for terminals and for JSON.
#include "cli/terminal/text.h"

#include <algorithm>
#include <cstdint>

#include "kit/format.h"
#include "kit/utf8.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

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

std::string Printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = kit::Utf8Length(text);
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
    const std::size_t length = kit::Utf8Length(text);
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
