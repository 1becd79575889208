// Text inside HTML and SVG.
#include "toolkit/view/internal/markup.h"

#include <algorithm>

#include "kit/utf8.h"

namespace zuna_toolkit {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

/// Whether a character may stand in HTML and in XML, which has no U+FFFE and U+FFFF (XML 1.0, section 2.2).
bool IsShown(char32_t character) {
  return !kit::IsControl(character) && character != 0xFFFE && character != 0xFFFF;
}

/// What stands for `character`, one well-formed sequence, in markup.
std::string_view Shown(std::string_view character) {
  switch (character.front()) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return IsShown(kit::CodePoint(character)) ? character : kReplacement;
  }
}

}  // namespace

std::string Escaped(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = kit::Utf8Length(text);
    escaped += length == 0 ? kReplacement : Shown(text.substr(0, length));
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return escaped;
}

std::string Shortened(std::string_view text, std::size_t characters) {
  std::size_t end = 0;
  for (; characters > 0 && end < text.size(); --characters) {
    end += std::max<std::size_t>(kit::Utf8Length(text.substr(end)), 1);
  }
  std::string shortened(text.substr(0, end));
  if (end < text.size()) shortened += "…";
  return shortened;
}

std::string Attribute(std::string_view name, std::string_view value) {
  std::string attribute(" ");
  return attribute.append(name).append("=\"").append(Escaped(value)).append("\"");
}

std::string Element(std::string_view name, std::string_view text) {
  std::string element("<");
  element.append(name).append(">").append(Escaped(text));
  return element.append("</").append(name).append(">");
}

std::string Fact(std::string_view name, std::string_view value) {
  return "<div>" + Element("dt", name) + Element("dd", value) + "</div>";
}

}  // namespace zuna_toolkit
