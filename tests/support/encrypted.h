// Encrypting and decrypting in tests.

#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_test {

inline const CipherKey kKey{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, {21, 22, 23, 24}};

inline std::vector<std::uint8_t> Encrypted(const std::string& plaintext, const CipherKey& key = kKey) {
  zuna_sec::TwoFishCipherStream stream(std::string(), key.key, key.iv);
  stream.GetStream().write(plaintext.data(), static_cast<std::streamsize>(plaintext.size()));
  return stream.GetEncryptedBytes();
}

/// The plaintext of a path or of encrypted bytes.
template <typename Source>
std::string Decrypted(const Source& source, const CipherKey& key = kKey) {
  zuna_sec::TwoFishCipherStream stream(source, key.key, key.iv);
  std::ostringstream plaintext;
  plaintext << stream.GetStream().rdbuf();
  return plaintext.str();
}

/// What a current show or log writes at this version.
template <typename Model>
std::string WrittenAt(const Model& model, const cmn::FileVersion& version) {
  std::ostringstream os;
  model.WriteBinary(os, version);
  return os.str();
}

}  // namespace zuna_test
