// The bytes of an encrypted file; docs/envelope.md draws them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/security/crypto.h"
#include "platform/security/secret.h"

namespace zuna_security {

/// Tells a wrong key from damage.
inline constexpr std::size_t kKeyCheckSize = 32;

/// Everything before the ciphertext: magic, version, suite, zeros, plaintext length, key check, tag.
inline constexpr std::size_t kEnvelopeHeaderSize = 8 + 1 + 1 + 6 + 8 + kKeyCheckSize + kSivTagSize;

/// 1 GiB. Larger data is refused by its actual size; no memory is reserved from the length field.
inline constexpr std::size_t kMaxPlaintextSize = std::size_t{1} << 30;
inline constexpr std::size_t kMaxEnvelopeSize = kEnvelopeHeaderSize + kMaxPlaintextSize;

/// A caller's key material.
struct KeyAndIv {
  Bytes key;
  Bytes iv;
};

/// What an envelope's key and IV are turned into.
struct EnvelopeKeys {
  Secret<kSivKeySize> siv;          // the CMAC key, then the CTR key
  Secret<kKeyCheckSize> key_check;  // is in the envelope, to tell a wrong key from damage
};

/// Derives `keys` from a caller's key and IV, each of any length. Throws GcryptFailure.
void DeriveKeys(Bytes key, Bytes iv, std::uint8_t suite, EnvelopeKeys& keys);

/// An envelope whose layout has been checked and nothing else: views of its fields.
struct Envelope {
  Bytes associated;  // bytes 0 to 55, which the tag covers with the plaintext
  Bytes key_check;
  Bytes tag;
  Bytes ciphertext;
};

/// Splits the bytes of an envelope into its fields. `name`, the path or "encrypted data", begins the
/// messages. Throws zuna_sec::NotEncryptedError, EmptyError, ChangedInTransferError,
/// UnsupportedEnvelopeError, TruncatedError, TrailingBytesError or TooLargeError.
Envelope ParseEnvelope(Bytes bytes, const std::string& name);

/// Decrypts into `plaintext`, which has the size of the ciphertext and may be the same memory; it is wiped on
/// failure. Throws zuna_sec::WrongKeyError, DamagedError or CipherUnavailableError.
void Open(const Envelope& envelope, const KeyAndIv& secrets, MutableBytes plaintext, const std::string& name);

/// Throws zuna_sec::TooLargeError where a plaintext of `size` bytes does not fit into an envelope.
void CheckPlaintextSize(std::size_t size, const std::string& name);

/// Encrypts into `envelope`, which has room for the header and the plaintext exactly. Throws
/// zuna_sec::CipherUnavailableError.
void Seal(Bytes plaintext, const KeyAndIv& secrets, MutableBytes envelope, const std::string& name);

}  // namespace zuna_security
