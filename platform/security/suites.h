// The cipher suites of envelopes: how keys are derived, a plaintext encrypted and its tag computed;
// docs/envelope.md.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/security/secret.h"

namespace zuna_security {

/// The number of a suite in an envelope. Both have keys by HKDF-SHA-256, and the tag is the first counter of
/// the encryption, so that one key and IV may be used for many files.
enum class Suite : std::uint8_t {
  kCmac = 1,  ///< Twofish-256 in SIV mode (RFC 5297): the tag is a CMAC. Only read.
  kHmac = 2,  ///< The tag is an HMAC-SHA-256, several times as fast; Twofish-256 in CTR mode.
};

inline constexpr std::array kSuites{Suite::kCmac, Suite::kHmac};
inline constexpr Suite kWrittenSuite = Suite::kHmac;

/// Tells a wrong key from damage.
inline constexpr std::size_t kKeyCheckSize = 32;

inline constexpr std::size_t kTagSize = 16;

using Tag = std::span<const std::uint8_t, kTagSize>;

/// A caller's key material, each part of any length.
struct KeyAndIv {
  Bytes key;
  Bytes iv;
};

/// What a caller's key and IV are turned into for a suite.
struct EnvelopeKeys {
  Suite suite = kWrittenSuite;
  Secret<32 + 32> cipher;           // the key of the tag, then that of CTR mode
  Secret<kKeyCheckSize> key_check;  // is in the envelope, to tell a wrong key from damage
};

/// Derives `keys`. Throws GcryptFailure.
void DeriveKeys(const KeyAndIv& secrets, Suite suite, EnvelopeKeys& keys);

/// Encrypts in kWrittenSuite, whose keys these are. The tag covers `associated`, whose size is the same for
/// all envelopes, and `plaintext`. `ciphertext` has the size of `plaintext` and may be the same memory.
/// Throws GcryptFailure.
void Encrypt(const EnvelopeKeys& keys, Bytes associated, Bytes plaintext, MutableBytes ciphertext,
             std::span<std::uint8_t, kTagSize> tag);

/// Decrypts in the suite of the keys. Returns false where the tag is not that of these bytes under these
/// keys. `plaintext`, which has the size of `ciphertext` and may be the same memory, is wiped then, and where
/// this throws. Throws GcryptFailure.
bool Decrypt(const EnvelopeKeys& keys, Bytes associated, Tag tag, Bytes ciphertext, MutableBytes plaintext);

/// The same without looking at the tag, which only begins the key stream: what was changed stays changed,
/// and nothing is wiped. Throws GcryptFailure.
void DecryptUnchecked(const EnvelopeKeys& keys, Tag tag, Bytes ciphertext, MutableBytes plaintext);

}  // namespace zuna_security
