// The decrypted bytes of a file that may be damaged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "kit/wipe.h"
#include "toolkit/document/open.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_toolkit {

using ByteVector = std::vector<std::uint8_t>;

/// The encrypted files that follow another one in the same file.
struct OtherFiles {
  std::vector<std::size_t> places;  ///< where the first ones begin
  std::size_t more = 0;             ///< how many there are after those
};

/// The plaintext of a file, and what is known about it.
struct Plaintext {
  ByteVector bytes;
  bool encrypted = true;             ///< whether it was
  bool authentic = false;            ///< whether the encryption vouches for it
  bool changed = false;              ///< whether the encryption shows that it was changed
  std::uint64_t missing_bytes = 0;   ///< how many the encryption says that it had after its end
  std::vector<std::string> remarks;  ///< what is wrong with the encryption
  std::size_t end = 0;               ///< after its last byte in the file
  std::size_t tail_end = 0;          ///< of the bytes after it that are of no other encrypted file
  OtherFiles others;                 ///< the encrypted files after it

  Plaintext() = default;
  Plaintext(Plaintext&&) = default;
  Plaintext& operator=(Plaintext&&) = default;
  ~Plaintext() { kit::Wipe(bytes); }
};

/// Decrypts `bytes`, or takes them as they are where they are not encrypted and `accept` allows it: up to the
/// place after the beginning where an encrypted file begins. Throws Error without a file, or
/// zuna_sec::CipherError.
Plaintext DecryptDamaged(std::span<const std::uint8_t> bytes, const CipherKey& key, Accept accept);

/// Throws that nothing can be saved before `at`, where an encrypted file begins.
[[noreturn]] void ThrowBeginsLater(std::size_t at);

}  // namespace zuna_toolkit
