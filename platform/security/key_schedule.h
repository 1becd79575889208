// The keys of an envelope; docs/envelope.md.

#pragma once

#include <cstdint>
#include <initializer_list>

#include "platform/security/secret.h"

namespace zuna_security {

inline constexpr std::size_t kSha256Size = 32;

/// HMAC-SHA-256 (RFC 2104) of the parts, one after the other. Throws GcryptFailure.
void HmacSha256(Bytes key, std::initializer_list<Bytes> parts, std::span<std::uint8_t, kSha256Size> mac);

/// HKDF-Extract with SHA-256 (RFC 5869, section 2.2).
void HkdfExtract(Bytes salt, Bytes key, std::span<std::uint8_t, kSha256Size> prk);

/// HKDF-Expand with SHA-256 (RFC 5869, section 2.3) of `info` followed by `more_info`; fills `okm`, at most
/// 255 * 32 bytes.
void HkdfExpand(Bytes prk, Bytes info, Bytes more_info, MutableBytes okm);

/// What an envelope's key and IV are turned into.
struct EnvelopeKeys {
  Secret<32 + 32> siv;   // the CMAC key, then the CTR key
  Secret<32> key_check;  // stands in the envelope, to tell a wrong key from damage
};

/// Derives `keys` from a caller's key and IV, each of any length. Throws GcryptFailure.
void DeriveKeys(Bytes key, Bytes iv, std::uint8_t suite, EnvelopeKeys& keys);

}  // namespace zuna_security
