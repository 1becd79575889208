// Text in UTF-8 (RFC 3629). Not part of the contract with the converter.

#pragma once

#include <cstddef>
#include <string_view>

#include "kit/api.h"

namespace kit {

/// The number of bytes of the well-formed sequence at the front of `text`, 0 where there is none. Overlong
/// forms, surrogates and values above U+10FFFF are not well-formed.
ZUNA_API std::size_t Utf8Length(std::string_view text);

/// Whether all of `text` is well-formed.
ZUNA_API bool IsUtf8(std::string_view text);

/// The longest beginning of `text` of at most `limit` bytes, shortened to whole characters where `text` is
/// UTF-8.
ZUNA_API std::string_view CutUtf8(std::string_view text, std::size_t limit);

}  // namespace kit
