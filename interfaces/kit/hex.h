// Bytes as text. Not part of the contract with the converter.

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "kit/api.h"

namespace kit {

/// The value of a hexadecimal digit of either case; -1 for anything else.
ZUNA_API int HexDigit(char digit);

/// The bytes that pairs of hexadecimal digits of either case spell; none where `digits` is anything else.
ZUNA_API std::optional<std::string> DecodeHex(std::string_view digits);

/// Two lower-case hexadecimal digits for each of the bytes.
ZUNA_API std::string EncodeHex(std::span<const std::uint8_t> bytes);

}  // namespace kit
