// Text for terminals and for JSON.
#pragma once

#include <string>
#include <string_view>

namespace zuna_cli {

/// `text` for a terminal: bytes that are no UTF-8 and control characters become "\xNN".
std::string Printable(std::string_view text);

/// The same for a text of several lines: line breaks and tabulators stay.
std::string PrintableLines(std::string_view text);

/// `text` as a JSON string with its quotation marks. Every byte that is no UTF-8 becomes U+FFFD.
std::string JsonString(std::string_view text);

}  // namespace zuna_cli
