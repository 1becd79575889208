// Opening files: read once, decrypted once, told apart by their content.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "kit/api.h"
#include "toolkit/document/document.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_toolkit {

/// The most that an encrypted file holds, in bytes: 1 GiB of content and what the encryption adds.
inline constexpr std::size_t kMaxFileSize = (std::size_t{1} << 30) + 4096;

/// What a file may be.
enum class Accept {
  kEncrypted,         ///< encrypted files only
  kEncryptedOrPlain,  ///< files that are not encrypted too
};

/// The decrypted content of a file, which has not been looked at yet.
class ZUNA_API OpenedFile {
 public:
  /// Reads the file at `path`, which may be a pipe, and decrypts it. Throws Error: ErrorKind::kIo where it
  /// cannot be read, kWrongKey and kNoKey, others where it is damaged, too large or not encrypted.
  OpenedFile(const std::string& path, const CipherKey& key, Accept accept = Accept::kEncrypted);

  /// The same for bytes that were read elsewhere. `name` is what messages call them.
  static OpenedFile FromBytes(const std::vector<std::uint8_t>& bytes, const std::string& name,
                              const CipherKey& key, Accept accept = Accept::kEncrypted);

  /// What messages call the file.
  const std::string& name() const { return name_; }

  /// Whether the file was encrypted. One that was not is the plaintext itself.
  bool is_encrypted() const { return is_encrypted_; }

  /// The plaintext; no call here depends on its position or state.
  std::iostream& stream() { return cipher_->GetStream(); }
  /// The plaintext as the converter's functions take it.
  zuna_sec::TwoFishCipherStream& cipher() { return *cipher_; }

 private:
  using Cipher = std::unique_ptr<zuna_sec::TwoFishCipherStream>;

  /// `opened` is the plaintext, and whether it was encrypted.
  OpenedFile(std::string name, std::pair<Cipher, bool> opened)
      : name_(std::move(name)), cipher_(std::move(opened.first)), is_encrypted_(opened.second) {}

  std::string name_;
  Cipher cipher_;
  bool is_encrypted_;
};

/// Whether `bytes` begin like an encrypted file. Fewer than 8 bytes do not.
ZUNA_API bool IsEncrypted(std::span<const std::uint8_t> bytes);

/// What `file` holds, as its content tells. A legacy show begins with no mark: what has no other mark is read
/// as one to be sure. Throws Error: kNotAShowOrLog where `file` is no show and no log of any version,
/// kTextError for a text that does not state what it holds, kUnsupportedVersion; and kNotEncrypted, kMidiFile
/// or kArchive where `file` is not encrypted, and neither a mark nor a song tells that it is a plain show or
/// log; kEncryptedTwice where what it holds is encrypted again.
ZUNA_API FileType Detect(OpenedFile& file);

/// What a caller reads.
enum class Expected {
  kAny,      ///< a show or a log of any version
  kShow,     ///< a show of any version
  kLegacy,   ///< a show or a log of version 0.0
  kCurrent,  ///< a show or a log of a current version
};

/// Reads the show or log in `file`. Throws Error where it is not what is expected, and where it
/// is damaged, with song, field and offset where they are known.
ZUNA_API Document ReadDocument(OpenedFile& file, Expected expected = Expected::kAny);

/// Opens and reads the file at `path`. Throws what these throw.
ZUNA_API Document OpenDocument(const std::string& path, const CipherKey& key,
                               Accept accept = Accept::kEncrypted);

}  // namespace zuna_toolkit
