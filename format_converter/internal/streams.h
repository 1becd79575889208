#pragma once

// What all entry points do with streams: recognise a text document, guard a read, collect an encrypted
// output.

#include <cstdint>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "kit/error.h"
#include "zuna_sec/cipher_stream.h"

/// Whether the stream goes on with a text document. It states its version in a place of its own, and is not
/// probed.
inline bool begins_text_document(std::istream& is) { return is.peek() == '{'; }

/// Calls `read` and returns what it returns. A stream's failure becomes a kit::IoError with `what_failed`
/// and, directly behind it, the failure's own text; every other exception passes.
template <typename Read>
auto guarded_read(const std::string& what_failed, Read read) {
  try {
    return read();
  } catch (const std::ios_base::failure& failure) {
    throw kit::IoError(what_failed + failure.what());
  }
}

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
