// Text for terminals and for JSON.
#include "cli/terminal/text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

#include "cli/terminal/sequences.h"
#include "kit/format.h"
#include "kit/hex.h"
#include "kit/utf8.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD
constexpr char32_t kLargestInFourDigits = 0xFFFF;
constexpr char32_t kFirstHigh = 0xD800;  // of surrogates
constexpr char32_t kFirstLow = 0xDC00;
constexpr std::size_t kNumberEscape = 6;  // "\uNNNN"
constexpr char32_t kFirstSelector = 0xFE00;
constexpr char32_t kLastSelector = 0xFE0F;

bool IsEscaped(char32_t character) { return kit::IsControl(character) || kit::IsInvisible(character); }

/// "\uNNNN"; characters above U+FFFF as two surrogates (RFC 8259, section 7).
std::string JsonEscape(char32_t character) {
  if (character <= kLargestInFourDigits) return kit::format("\\u%04x", static_cast<unsigned>(character));
  const auto above = static_cast<unsigned>(character) - 0x10000;
  return kit::format("\\u%04x\\u%04x", 0xD800 + (above >> 10), 0xDC00 + (above & 0x3FF));
}

std::string TerminalEscape(char32_t character) {
  const auto value = static_cast<unsigned>(character);
  if (value < 0x80) return kit::format("\\x%02x", value);
  return kit::format(character <= kLargestInFourDigits ? "\\u%04x" : "\\U%08x", value);
}

std::string ByteEscape(char byte) {
  return kit::format("\\x%02x", static_cast<unsigned>(static_cast<std::uint8_t>(byte)));
}

/// The value of hexadecimal digits.
char32_t HexNumber(std::string_view digits) {
  char32_t value = 0;
  for (const char digit : digits) value = value * 16 + static_cast<char32_t>(kit::HexDigit(digit) & 0xF);
  return value;
}

void AppendUtf8(std::string& text, char32_t character) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const utf8proc_ssize_t size = utf8proc_encode_char(static_cast<utf8proc_int32_t>(character), bytes.data());
  text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(size));
}

/// Puts `text` together of what `shown` makes of its characters and `broken` of bytes that are none.
template <typename Shown, typename Broken>
std::string Rewritten(std::string_view text, Shown shown, Broken broken) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = kit::Utf8Length(text);
    if (length == 0) {
      out += broken(text[0]);
      text.remove_prefix(1);
      continue;
    }
    const std::string_view character = text.substr(0, length);
    out += shown(character, kit::CodePoint(character));
    text.remove_prefix(length);
  }
  return out;
}

}  // namespace

std::string Printable(std::string_view text) {
  Sequences sequences;
  const auto shown = [&](std::string_view character, char32_t value) {
    const auto end = static_cast<std::size_t>(character.data() - text.data()) + character.size();
    const std::string_view rest = text.substr(end);
    const std::size_t length = kit::Utf8Length(rest);
    const bool is_used = sequences.Uses(value, length == 0 ? 0 : kit::CodePoint(rest.substr(0, length)));
    const bool is_escaped = IsEscaped(value) || (value >= kFirstSelector && value <= kLastSelector);
    return is_escaped && !is_used ? TerminalEscape(value) : std::string(character);
  };
  return Rewritten(text, shown, ByteEscape);
}

std::string LookOf(const std::string& text) {
  utf8proc_uint8_t* folded = nullptr;
  const utf8proc_ssize_t size = utf8proc_map(
      reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
      &folded, static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD));
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
  if (size == UTF8PROC_ERROR_NOMEM) throw std::bad_alloc();
  if (size < 0) return zuna_toolkit::LowerCase(text);
  return {reinterpret_cast<const char*>(folded), static_cast<std::size_t>(size)};
}

std::string JsonString(std::string_view text) {
  const auto shown = [](std::string_view character, char32_t value) {
    if (IsEscaped(value)) return JsonEscape(value);
    if (character == "\"" || character == "\\") return '\\' + std::string(character);
    return std::string(character);
  };
  return '"' + Rewritten(text, shown, [](char) { return kReplacement; }) + '"';
}

std::string TextOfJson(std::string_view json) {
  std::string text;
  char32_t high = 0;  // the first one of two surrogates
  json = json.substr(std::min<std::size_t>(1, json.size()));
  while (!json.empty() && json[0] != '"') {
    const bool is_escape = json[0] == '\\' && json.size() > 1;
    const bool is_number = json.starts_with("\\u") && json.size() >= kNumberEscape;
    if (is_number) {
      const char32_t unit = HexNumber(json.substr(2, kNumberEscape - 2));
      if (unit >= kFirstHigh && unit < kFirstLow) {
        high = unit;
      } else {
        const bool is_pair = high != 0 && unit >= kFirstLow;
        AppendUtf8(text, is_pair ? 0x10000 + ((high - kFirstHigh) << 10) + (unit - kFirstLow) : unit);
        high = 0;
      }
    } else {
      text += json[is_escape ? 1 : 0];
    }
    json.remove_prefix(is_number ? kNumberEscape : is_escape ? 2 : 1);
  }
  return text;
}

std::string PrintableJson(std::string_view text) {
  const auto shown = [](std::string_view character, char32_t value) {
    return IsEscaped(value) && value != '\n' ? JsonEscape(value) : std::string(character);
  };
  return Rewritten(text, shown, [](char) { return kReplacement; });
}

}  // namespace zuna_cli
