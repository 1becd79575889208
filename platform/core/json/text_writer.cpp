#include "platform/core/json/text_writer.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>

#include "kit/utf8.h"
#include "platform/core/json/float_text.h"

namespace zuna_core {

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

/// What follows the backslash for each byte: 0 where none is needed, 'u' for the form with four digits.
constexpr std::array<char, 256> MakeEscapes() {
  std::array<char, 256> escapes{};
  for (std::size_t control = 0; control < 0x20; ++control) escapes[control] = 'u';
  escapes['\b'] = 'b';
  escapes['\f'] = 'f';
  escapes['\n'] = 'n';
  escapes['\r'] = 'r';
  escapes['\t'] = 't';
  escapes['"'] = '"';
  escapes['\\'] = '\\';
  return escapes;
}
constexpr std::array<char, 256> kEscapes = MakeEscapes();

}  // namespace

void JsonTextWriter::Number(std::int64_t value) {
  constexpr std::size_t kLongest = 20;
  char* to = window_.Room(kLongest);
  window_.Commit(std::to_chars(to, to + kLongest, value).ptr);
}

void JsonTextWriter::Float(float value) {
  if (std::isfinite(value)) {
    Raw(FloatText(value));
  } else {
    Raw(R"({"bits": )");
    Number(std::bit_cast<std::uint32_t>(value));
    Raw("}");
  }
}

void JsonTextWriter::NewLine(std::size_t indent) {
  constexpr std::string_view kNewLine = "\n            ";
  Raw(kNewLine.substr(0, 1 + indent));
}

void JsonTextWriter::Text(std::string_view text) {
  if (kit::IsUtf8(text)) {
    Raw("\"");
    Escaped(text);
    Raw("\"");
  } else {
    Raw(R"({"bytes": ")");
    Hex(text);
    Raw(R"("})");
  }
}

void JsonTextWriter::Escaped(std::string_view text) {
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && kEscapes[static_cast<unsigned char>(text[plain])] == 0) ++plain;
    Raw(text.substr(0, plain));
    if (plain == text.size()) return;
    const auto byte = static_cast<unsigned char>(text[plain]);
    const char escape[] = {'\\', kEscapes[byte], '0', '0', kHexDigits[byte >> 4], kHexDigits[byte & 0x0F]};
    Raw({escape, escape[1] == 'u' ? sizeof escape : 2});
    text.remove_prefix(plain + 1);
  }
}

void JsonTextWriter::Hex(std::string_view bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const char digits[] = {kHexDigits[byte >> 4], kHexDigits[byte & 0x0F]};
    Raw({digits, sizeof digits});
  }
}

}  // namespace zuna_core
