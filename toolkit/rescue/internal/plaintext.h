// The decrypted bytes of a file that may be damaged.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "kit/wipe.h"
#include "toolkit/document/open.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_toolkit {

using ByteVector = std::vector<std::uint8_t>;

/// The plaintext of a file, and what is known about it.
struct Plaintext {
  ByteVector bytes;
  bool encrypted = true;             ///< whether it was
  bool authentic = false;            ///< whether the encryption vouches for it
  bool changed = false;              ///< whether the encryption shows that it was changed
  std::uint64_t missing_bytes = 0;   ///< how many the encryption says that it had after its end
  std::vector<std::string> remarks;  ///< what is wrong with the encryption
  std::vector<std::string> missing;  ///< what of the file was not decrypted

  Plaintext() = default;
  Plaintext(Plaintext&&) = default;
  Plaintext& operator=(Plaintext&&) = default;
  ~Plaintext() { kit::Wipe(bytes); }
};

/// Decrypts `bytes`, or takes them as they are where they are not encrypted and `accept` allows it. Throws
/// Error without a file, or zuna_sec::CipherError.
Plaintext DecryptDamaged(std::span<const std::uint8_t> bytes, const CipherKey& key, Accept accept);

}  // namespace zuna_toolkit
