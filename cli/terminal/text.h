// Text for terminals and for JSON.
#pragma once

#include <string>
#include <string_view>

namespace zuna_cli {

/// `text` for a terminal, on one line: what could steer the terminal or hide in the text (kit::IsControl,
/// kit::IsInvisible, and variation selectors) becomes "\xNN" where it has one byte and "\uNNNN" otherwise,
/// and a byte that is no UTF-8 becomes "\xNN". Joiners and selectors stay where they belong to a character
/// (Sequences).
std::string Printable(std::string_view text);

/// The same for all texts that differ in the case of letters or in how these are composed alone: an accent
/// may be a character of its own. Text that is not UTF-8 has its letters A to Z in lower case.
std::string LookOf(const std::string& text);

/// `text` as a JSON string with its quotation marks; the same characters are escaped as JSON does. Every byte
/// that is no UTF-8 becomes U+FFFD.
std::string JsonString(std::string_view text);

/// The text of the string at the beginning of `json`, as JsonString() writes it. What follows is passed over.
std::string TextOfJson(std::string_view json);

/// JSON text of several lines for a terminal: the same characters in its strings are escaped as JSON does.
std::string PrintableJson(std::string_view text);

}  // namespace zuna_cli
