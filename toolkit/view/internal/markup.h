// Text inside HTML and SVG.
#pragma once

#include <string>
#include <string_view>

namespace zuna_toolkit {

/// `text` as the content of an element or of an attribute in quotation marks: it is never markup. A byte that
/// is no UTF-8, and a character that is not shown but moves or hides others, becomes U+FFFD.
std::string Escaped(std::string_view text);

/// The beginning of `text`, of at most `characters` characters, with "…" where it was cut. Not escaped.
std::string Shortened(std::string_view text, std::size_t characters);

/// `name="value"` with a space before it; `value` is escaped.
std::string Attribute(std::string_view name, std::string_view value);

/// `<name>text</name>`; `text` is escaped.
std::string Element(std::string_view name, std::string_view text);

/// A name and its value for a description list.
std::string Fact(std::string_view name, std::string_view value);

}  // namespace zuna_toolkit
