// What a damaged encrypted file still holds. Not part of the contract with the converter, which takes nothing
// that is not authentic: only a program that saves what is left of damaged files needs this.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "kit/api.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_sec {

/// What every encrypted file begins with; docs/envelope.md.
inline constexpr std::array<std::uint8_t, 8> kEnvelopeMagic{0x89, 'Z', 'S', 'C', '\r', '\n', 0x1a, '\n'};

/// How many bytes of an encrypted file are not those of its plaintext: the header, before them.
inline constexpr std::size_t kEnvelopeHeaderSize = 72;

/// A damaged encrypted file, decrypted all the same.
struct DamagedEnvelope {
  /// Whether nobody has changed the plaintext: the tag is right, once the header is as it must have been.
  /// Otherwise nothing tells which bytes of the plaintext are those that were encrypted.
  bool authentic = false;

  /// The plaintext, as much of it as there is. The caller wipes it.
  std::vector<std::uint8_t> plaintext;

  /// The length that the header states. Where the plaintext is not authentic, fewer bytes mean that the file
  /// was cut, more that bytes were added, or either that the header is damaged.
  std::uint64_t stated_size = 0;

  /// Bytes after the end of an authentic plaintext, which do not belong to it.
  std::uint64_t trailing = 0;

  /// The fields of the header that cannot be right: "magic", "version", "suite", "reserved bytes", "length",
  /// "key check". A damaged length is only known where the plaintext is authentic.
  std::vector<std::string_view> damaged_fields;
};

/// Decrypts what is there of the encrypted file `bytes`, whatever was changed in it. A key counts as the
/// right one where most bytes of the key check agree. Damage in the tag cannot be told from damage elsewhere
/// and makes the whole plaintext unreadable. Throws NotEncryptedError (and its derived classes) or
/// UnsupportedEnvelopeError for bytes that are no such file under this key, TruncatedError for fewer bytes
/// than a header has, WrongKeyError, TooLargeError or CipherUnavailableError.
ZUNA_API DamagedEnvelope OpenDamaged(std::span<const std::uint8_t> bytes, const CipherKey& key);

}  // namespace zuna_sec
