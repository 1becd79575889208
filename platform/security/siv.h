// The cipher of an envelope; docs/envelope.md.

#pragma once

#include <cstdint>

#include "platform/security/secret.h"

namespace zuna_security {

inline constexpr std::size_t kSivKeySize = 32 + 32;  // CMAC key, CTR key
inline constexpr std::size_t kSivTagSize = 16;

using SivKey = std::span<const std::uint8_t, kSivKeySize>;

/// Encrypts with Twofish-256 in SIV mode (RFC 5297, one string of associated data). `ciphertext` has the size
/// of `plaintext` and may be the same memory. Throws GcryptFailure.
void SivEncrypt(SivKey key, Bytes associated, Bytes plaintext, MutableBytes ciphertext,
                std::span<std::uint8_t, kSivTagSize> tag);

/// Decrypts what SivEncrypt() encrypted. Returns false and wipes `plaintext` where the tag is not that of
/// these bytes under this key. `plaintext` has the size of `ciphertext` and may be the same memory. Throws
/// GcryptFailure.
bool SivDecrypt(SivKey key, Bytes associated, std::span<const std::uint8_t, kSivTagSize> tag,
                Bytes ciphertext, MutableBytes plaintext);

}  // namespace zuna_security
