// Writing JSON text, indented by two blanks a level.

#include "platform/core/json/json_writer.h"

#include <array>
#include <bit>
#include <cmath>

#include "kit/utf8.h"

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

void JsonWriter::OpenObject(Style style) {
  Raw("{");
  indent_ += 2;
  one_line_ = style == Style::kOneLine;
  empty_ = true;
}

void JsonWriter::CloseObject() {
  indent_ -= 2;
  if (!one_line_) NewLine();
  Raw("}");
  one_line_ = false;
  empty_ = false;
}

void JsonWriter::OpenList() {
  Raw("[");
  indent_ += 2;
  empty_ = true;
}

void JsonWriter::Element() {
  if (!empty_) Raw(",");
  NewLine();
  empty_ = false;
}

void JsonWriter::CloseList() {
  indent_ -= 2;
  if (!empty_) NewLine();
  Raw("]");
  empty_ = false;
}

void JsonWriter::NewLine() {
  char* to = output_.Room(1 + kMaxIndent);
  *to++ = '\n';
  std::memset(to, ' ', indent_);
  output_.Commit(to + indent_);
}

void JsonWriter::Float(float value) {
  if (std::isfinite(value)) {
    Raw(FloatText(value));
  } else {
    Raw(R"({"bits": )");
    Number(std::bit_cast<std::uint32_t>(value));
    Raw("}");
  }
}

void JsonWriter::Text(std::string_view text) {
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

void JsonWriter::Escaped(std::string_view text) {
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

void JsonWriter::Hex(std::string_view bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const char digits[] = {kHexDigits[byte >> 4], kHexDigits[byte & 0x0F]};
    Raw({digits, sizeof digits});
  }
}

}  // namespace zuna_core
