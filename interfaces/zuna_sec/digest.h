// A digest that tells contents apart. Not part of the contract with the converter.

#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "kit/api.h"

namespace zuna_sec {

/// The SHA-256 digest (FIPS 180-4) of `bytes` as 64 lower-case hexadecimal digits. Throws
/// CipherUnavailableError.
ZUNA_API std::string Sha256Text(std::span<const std::uint8_t> bytes);

}  // namespace zuna_sec
