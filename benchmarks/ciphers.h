// The ciphers of envelopes alone, by libgcrypt, in memory that is there already.

#pragma once

#include <cstdint>
#include <vector>

namespace zuna_bench {

/// HMAC-SHA-256 of `text`.
void Hmac(const std::vector<std::uint8_t>& text);

/// Twofish-256 in CTR mode, in place.
void Ctr(std::vector<std::uint8_t>& text);

/// Twofish-256 in SIV mode, in place.
void Siv(std::vector<std::uint8_t>& text);

}  // namespace zuna_bench
