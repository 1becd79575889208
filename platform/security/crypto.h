// The cryptographic functions of an envelope, by libgcrypt; docs/envelope.md.

#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <stdexcept>

#include "platform/security/secret.h"

namespace zuna_security {

/// The cryptographic library refused to work; the message is its reason.
class GcryptFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr std::size_t kSha256Size = 32;

/// SHA-256 (FIPS 180-4) of `first` and the rest, one after the other. Throws GcryptFailure.
void Sha256(Bytes first, std::initializer_list<Bytes> rest, std::span<std::uint8_t, kSha256Size> digest);

/// HMAC-SHA-256 (RFC 2104) of the parts, one after the other. Throws GcryptFailure.
void HmacSha256(Bytes key, std::initializer_list<Bytes> parts, std::span<std::uint8_t, kSha256Size> mac);

/// HKDF-Extract with SHA-256 (RFC 5869, section 2.2).
void HkdfExtract(Bytes salt, Bytes key, std::span<std::uint8_t, kSha256Size> prk);

/// HKDF-Expand with SHA-256 (RFC 5869, section 2.3) of `info` followed by `more_info`; fills `okm`, at most
/// 255 * 32 bytes.
void HkdfExpand(Bytes prk, Bytes info, Bytes more_info, MutableBytes okm);

inline constexpr std::size_t kTwofishKeySize = 32;
inline constexpr std::size_t kTwofishBlockSize = 16;

/// Encrypts or decrypts, which is the same, with Twofish-256 in CTR mode (NIST SP 800-38A, section 6.5).
/// `counter` is the first counter, a number of 128 bits, highest byte first, which wraps around. `to` has the
/// size of `from` and may be the same memory. Throws GcryptFailure.
void TwofishCtr(std::span<const std::uint8_t, kTwofishKeySize> key,
                std::span<const std::uint8_t, kTwofishBlockSize> counter, Bytes from, MutableBytes to);

/// Decrypts what was encrypted with Twofish-256 in SIV mode (RFC 5297, one string of associated data; `key`
/// is the key of CMAC, then that of CTR mode). Returns false and wipes `plaintext` where the tag is not that
/// of these bytes under this key. `plaintext` has the size of `ciphertext` and may be the same memory. Throws
/// GcryptFailure.
bool TwofishSivDecrypt(std::span<const std::uint8_t, 2 * kTwofishKeySize> key, Bytes associated,
                       std::span<const std::uint8_t, kTwofishBlockSize> tag, Bytes ciphertext,
                       MutableBytes plaintext);

}  // namespace zuna_security
