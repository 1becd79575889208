// Writing JSON text, indented by two blanks a level.

#include "zuna_json/writer.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>

#include "kit/utf8.h"
#include "platform/core/bytes/buffered_output.h"
#include "platform/core/json/numbers.h"

namespace zuna_json {

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

void PutEscaped(zuna_core::BufferedOutput& output, std::string_view text) {
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && kEscapes[static_cast<unsigned char>(text[plain])] == 0) ++plain;
    output.Write(text.substr(0, plain));
    if (plain == text.size()) return;
    const auto byte = static_cast<unsigned char>(text[plain]);
    const char escape[] = {'\\', kEscapes[byte], '0', '0', kHexDigits[byte >> 4], kHexDigits[byte & 0x0F]};
    output.Write({escape, escape[1] == 'u' ? sizeof escape : 2});
    text.remove_prefix(plain + 1);
  }
}

void PutHex(zuna_core::BufferedOutput& output, std::string_view bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const char digits[] = {kHexDigits[byte >> 4], kHexDigits[byte & 0x0F]};
    output.Write({digits, sizeof digits});
  }
}

}  // namespace

Writer::Writer(std::ostream& os) : output_(std::make_unique<zuna_core::BufferedOutput>(os, false)) {}

Writer::~Writer() = default;

void Writer::Flush() { output_->Flush(); }

void Writer::Raw(std::string_view text) { output_->Write(text); }

void Writer::Number(std::uint32_t value) {
  output_->Commit(PutDecimal(output_->Room(kMaxDecimalSize), value));
}

void Writer::Number(std::int32_t value) {
  output_->Commit(PutDecimal(output_->Room(kMaxSignedDecimalSize), value));
}

void Writer::Key(std::string_view key) {
  char* to = output_->Room(2 + kMaxIndent + 1 + kMaxKeySize + 3);
  if (!empty_) *to++ = ',';
  if (!one_line_) *to++ = '\n';
  const std::size_t blanks = one_line_ ? std::size_t{!empty_} : indent_;
  std::memset(to, ' ', blanks);
  to += blanks;
  *to++ = '"';
  to += key.copy(to, kMaxKeySize);
  *to++ = '"';
  *to++ = ':';
  *to++ = ' ';
  output_->Commit(to);
  empty_ = false;
}

void Writer::Row(std::span<const std::uint32_t> values) {
  Raw(empty_ ? "\n[" : ",\n[");
  for (std::size_t column = 0; column < values.size(); ++column) {
    if (column != 0) Raw(",");
    Number(values[column]);
  }
  Raw("]");
  empty_ = false;
}

void Writer::OpenObject(Style style) {
  Raw("{");
  indent_ += 2;
  one_line_ = style == Style::kOneLine;
  empty_ = true;
}

void Writer::CloseObject() {
  indent_ -= 2;
  if (!one_line_) NewLine();
  Raw("}");
  one_line_ = false;
  empty_ = false;
}

void Writer::OpenList() {
  Raw("[");
  indent_ += 2;
  empty_ = true;
}

void Writer::Element() {
  if (!empty_) Raw(",");
  NewLine();
  empty_ = false;
}

void Writer::CloseList() {
  indent_ -= 2;
  if (!empty_) NewLine();
  Raw("]");
  empty_ = false;
}

void Writer::NewLine() {
  char* to = output_->Room(1 + kMaxIndent);
  *to++ = '\n';
  std::memset(to, ' ', indent_);
  output_->Commit(to + indent_);
}

void Writer::Float(float value) {
  if (std::isfinite(value)) {
    Raw(FloatText(value));
  } else {
    Raw(R"({"bits": )");
    Number(std::bit_cast<std::uint32_t>(value));
    Raw("}");
  }
}

void Writer::Text(std::string_view text) {
  if (kit::IsUtf8(text)) {
    Raw("\"");
    PutEscaped(*output_, text);
    Raw("\"");
  } else {
    Raw(R"({"bytes": ")");
    PutHex(*output_, text);
    Raw(R"("})");
  }
}

}  // namespace zuna_json
