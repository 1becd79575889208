#pragma once

// What all entry points do with streams: recognise the text form, guard a read, encrypt an output.

#include <cstdint>
#include <fstream>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/error.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_converter {

/// Whether the next byte of the stream begins the text form of a show or log, which is not probed.
inline bool begins_text_form(std::istream& is) { return is.peek() == cmn::kTextFormStart; }

/// Calls `read` and returns its result. Turns std::ios_base::failure into kit::IoError, whose message is
/// `what_failed` directly followed by the failure's text. Passes every other exception on.
template <typename Read>
auto guarded_read(const std::string& what_failed, Read read) {
  try {
    return read();
  } catch (const std::ios_base::failure& failure) {
    throw kit::IoError(what_failed + failure.what());
  }
}

/// Opens a file. One whose path holds a NUL byte is not there: the system would cut the path off and open
/// another file.
inline void open_to_read(std::ifstream& file, const std::string& path) {
  if (path.find('\0') != std::string::npos) return file.setstate(std::ios_base::failbit);
  file.open(path, std::ios_base::in | std::ios_base::binary);
}

/// `path` for a message, which would end at a NUL byte.
inline std::string shown_path(std::string path) {
  for (std::size_t at = path.find('\0'); at != std::string::npos; at = path.find('\0')) {
    path.replace(at, 1, "\\0");
  }
  return path;
}

/// Decrypts the file at `path`. Throws kit::IoError for an empty path too: the stream would begin a new
/// plaintext.
inline zuna_sec::TwoFishCipherStream opened(const std::string& path, const std::vector<std::uint8_t>& key,
                                            const std::vector<std::uint8_t>& iv) {
  if (path.empty()) throw kit::IoError("the path of an input is empty; give the path of a file");
  return {path, key, iv};
}

/// Decrypts the bytes of a file.
inline zuna_sec::TwoFishCipherStream opened(const std::vector<std::uint8_t>& data,
                                            const std::vector<std::uint8_t>& key,
                                            const std::vector<std::uint8_t>& iv) {
  return {data, key, iv};
}

/// What failed when a version probe or the return to the start of a stream failed.
inline constexpr const char* kReadingStream = "Failed reading istream";

/// Moves the read position to the start of the stream.
inline void seek_start(std::istream& is) {
  guarded_read(kReadingStream, [&] { is.seekg(0); });
}

/// An encrypted stream that holds what `write(std::ostream&)` writes. While `write` runs, the stream throws
/// std::ios_base::failure when it cannot take all of it, so that an incomplete output is never stored.
/// Afterwards the stream has its own exception mask again: encrypting it may read it to its end.
class EncryptedOutput {
 public:
  template <typename Write>
  EncryptedOutput(const std::vector<std::uint8_t>& key, const std::vector<std::uint8_t>& iv, Write write)
      : stream_(std::string(), key, iv) {
    std::ostream& plaintext = stream_.GetStream();
    const std::ios_base::iostate own_mask = plaintext.exceptions();
    plaintext.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    write(plaintext);
    plaintext.exceptions(own_mask);
  }

  /// Returns a copy of `path`. The copy is made before the file is written, because copying can fail.
  std::string WriteToFile(const std::string& path) {
    std::string result = path;
    stream_.WriteToFile(result);
    return result;
  }

  std::vector<std::uint8_t> GetEncryptedBytes() { return stream_.GetEncryptedBytes(); }

 private:
  zuna_sec::TwoFishCipherStream stream_;
};

/// A legacy show or log, encrypted.
template <typename Legacy>
EncryptedOutput encrypt_legacy(const Legacy& legacy, const std::vector<std::uint8_t>& key,
                               const std::vector<std::uint8_t>& iv) {
  return {key, iv, [&](std::ostream& os) { legacy.write_binary(os); }};
}

/// A current show or log in the format of this version, encrypted.
template <typename Current>
EncryptedOutput encrypt_current(const Current& current, const cmn::FileVersion& version,
                                const std::vector<std::uint8_t>& key, const std::vector<std::uint8_t>& iv) {
  return {key, iv, [&](std::ostream& os) { current.WriteBinary(os, version); }};
}

}  // namespace zuna_converter
