#pragma once

#include <cstddef>
#include <string_view>

namespace zuna_core {

/// Whether `text` is well-formed UTF-8 (RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF).
bool IsUtf8(std::string_view text);

/// The longest beginning of `text` of at most `limit` bytes, shortened to whole characters where `text` is
/// UTF-8.
std::string_view CutText(std::string_view text, std::size_t limit);

}  // namespace zuna_core
