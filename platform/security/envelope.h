// The bytes of an encrypted file; docs/envelope.md draws them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/security/crypto.h"
#include "platform/security/secret.h"
#include "platform/security/suites.h"
#include "zuna_sec/damaged_envelope.h"

namespace zuna_security {

/// Where the fields of the header begin, which is everything before the ciphertext.
inline constexpr std::size_t kMagicOffset = 0;
inline constexpr std::size_t kVersionOffset = kMagicOffset + 8;
inline constexpr std::size_t kSuiteOffset = kVersionOffset + 1;
inline constexpr std::size_t kZeroOffset = kSuiteOffset + 1;
inline constexpr std::size_t kLengthOffset = kZeroOffset + 6;
inline constexpr std::size_t kKeyCheckOffset = kLengthOffset + 8;
inline constexpr std::size_t kTagOffset = kKeyCheckOffset + kKeyCheckSize;
using zuna_sec::kEnvelopeHeaderSize;
static_assert(kEnvelopeHeaderSize == kTagOffset + kTagSize);

/// 1 GiB. Larger data is refused by its actual size; no memory is reserved from the length field.
inline constexpr std::size_t kMaxPlaintextSize = std::size_t{1} << 30;
inline constexpr std::size_t kMaxEnvelopeSize = kEnvelopeHeaderSize + kMaxPlaintextSize;

/// An envelope whose layout has been checked and nothing else: views of its fields.
struct Envelope {
  Suite suite;
  Bytes associated;  // bytes 0 to 55, which the tag covers with the plaintext
  Bytes key_check;
  Bytes tag;
  Bytes ciphertext;
};

/// The plaintext length that a whole header states.
std::uint64_t StatedLength(Bytes envelope);

/// Checks magic, version, suite and zeros as far as they are present. Throws zuna_sec::NotEncryptedError,
/// EmptyError, ChangedInTransferError or UnsupportedEnvelopeError.
void CheckKind(Bytes bytes, const std::string& name);

/// Splits the bytes of an envelope into its fields. `name`, the path or "encrypted data", begins the
/// messages. Throws zuna_sec::NotEncryptedError, EmptyError, ChangedInTransferError,
/// UnsupportedEnvelopeError, TruncatedError, TrailingBytesError or TooLargeError.
Envelope ParseEnvelope(Bytes bytes, const std::string& name);

/// Decrypts into `plaintext`, which has the size of the ciphertext and may be the same memory; it is wiped on
/// failure. Throws zuna_sec::WrongKeyError, DamagedError or CipherUnavailableError.
void Open(const Envelope& envelope, const KeyAndIv& secrets, MutableBytes plaintext, const std::string& name);

/// Throws zuna_sec::WrongKeyError.
[[noreturn]] void ThrowWrongKey(const std::string& name);

/// Throws zuna_sec::CipherUnavailableError.
[[noreturn]] void ThrowUnavailable(const GcryptFailure& failure, const std::string& name);

/// Throws zuna_sec::TooLargeError where a plaintext of `size` bytes does not fit into an envelope.
void CheckPlaintextSize(std::size_t size, const std::string& name);

/// Fills `associated`, the kTagOffset bytes that the tag covers with a plaintext of `length` bytes.
void WriteAssociated(const EnvelopeKeys& keys, std::uint64_t length, MutableBytes associated);

/// Encrypts in kWrittenSuite into `envelope`, which has room for the header and the plaintext exactly. Throws
/// zuna_sec::CipherUnavailableError.
void Seal(Bytes plaintext, const KeyAndIv& secrets, MutableBytes envelope, const std::string& name);

}  // namespace zuna_security
