#pragma once

#include <cstdint>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "zuna_sec/cipher_stream.h"

/// An encrypted stream with what `write(std::ostream&)` writes. The stream throws std::ios_base::failure when
/// it cannot take everything, so that no part is ever taken for a whole.
class EncryptedOutput {
 public:
  template <typename Write>
  EncryptedOutput(const std::vector<std::uint8_t>& key, const std::vector<std::uint8_t>& iv, Write write)
      : stream_(std::string(), key, iv) {
    std::ostream& plaintext = stream_.GetStream();
    plaintext.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    write(plaintext);
  }

  /// Returns `path`, copied before the file is there: copying can fail.
  std::string WriteToFile(const std::string& path) {
    std::string result = path;
    stream_.WriteToFile(result);
    return result;
  }

  std::vector<std::uint8_t> GetEncryptedBytes() { return stream_.GetEncryptedBytes(); }

 private:
  zuna_sec::TwoFishCipherStream stream_;
};
