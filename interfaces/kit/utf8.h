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

/// The code point of `character`, one well-formed sequence.
ZUNA_API char32_t CodePoint(std::string_view character);

/// Whether a character moves the cursor or changes the order of the text around it instead of being shown: a
/// control character (C0, DEL, C1), a line or paragraph separator, or a bidirectional mark, embedding,
/// override or isolate (Unicode Standard Annex #9).
ZUNA_API bool IsControl(char32_t character);

/// Whether a character is a format character without a width, such as a zero-width space, a joiner, a soft
/// hyphen, a byte-order mark or a tag. Two texts that differ in these look alike.
ZUNA_API bool IsInvisible(char32_t character);

}  // namespace kit
