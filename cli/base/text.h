#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zuna_cli {

/// The length of the UTF-8 character (RFC 3629) at the beginning of `text`, 1 to 4 bytes; 0 where there is
/// none.
std::size_t Utf8Length(std::string_view text);

/// `text` for a terminal: bytes that are no UTF-8 and control characters become "\xNN".
std::string Printable(std::string_view text);

/// The same for a text of several lines: line breaks and tabulators stay.
std::string PrintableLines(std::string_view text);

/// `text` as a JSON string with its quotation marks. Every byte that is no UTF-8 becomes U+FFFD.
std::string JsonString(std::string_view text);

}  // namespace zuna_cli
