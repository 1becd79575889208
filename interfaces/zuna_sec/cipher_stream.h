// The encrypted file as a stream; docs/envelope.md describes its bytes.

#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "kit/api.h"

namespace zuna_sec {

/// The stream over a plaintext. Each security library defines it for itself: any standard read-write stream
/// over memory with independent read and write positions (docs/replacing-the-platform.md).
class PlaintextStream;

/// An encrypted file or byte buffer, held decrypted in memory.
class ZUNA_API CipherStream {
 public:
  virtual ~CipherStream();
  CipherStream(const CipherStream&) = delete;
  CipherStream& operator=(const CipherStream&) = delete;

  /// The whole plaintext as a read-write stream with independent read and write positions, left where the
  /// last operation put them. The same object on every call; its exception mask is clear at first.
  std::iostream& GetStream();

 protected:
  CipherStream();

  /// What GetStream() gives, for derived classes.
  PlaintextStream& plaintext() { return *plaintext_; }

 private:
  /// The name of the cipher, for messages.
  virtual const char* CipherName() const = 0;

  std::unique_ptr<PlaintextStream> plaintext_;
};

/// The Twofish cipher stream. Key and IV may be of any length, also empty; the same plaintext, key and IV
/// always give the same encrypted bytes, and reusing a key and an IV for many files is safe.
class ZUNA_API TwoFishCipherStream : public CipherStream {
 public:
  /// Reads and decrypts the file at `path`; with an empty `path`, starts an empty plaintext to be written.
  /// Throws kit::IoError when the file cannot be opened or read, and a zuna_sec::CipherError for what was
  /// read. No byte of the plaintext is released before all of it has been authenticated.
  TwoFishCipherStream(const std::string& path, const std::vector<std::uint8_t>& key,
                      const std::vector<std::uint8_t>& iv);

  /// Decrypts `data`. Throws a zuna_sec::CipherError.
  TwoFishCipherStream(const std::vector<std::uint8_t>& data, const std::vector<std::uint8_t>& key,
                      const std::vector<std::uint8_t>& iv);

  ~TwoFishCipherStream() override;

  /// Encrypts the whole plaintext and puts it into the file at `path` in one step: a program that
  /// opens the path sees the old file or the new one, never a part. A new file is readable by its owner only;
  /// one that is replaced keeps its mode. Throws kit::IoError naming the path, also where a write to the
  /// stream failed; TooLargeError for a plaintext of more than 1 GiB; CipherUnavailableError. The old file is
  /// untouched then and nothing else is left behind.
  void WriteToFile(const std::string& path);

  /// The whole plaintext, encrypted. Throws kit::IoError where a write to the stream failed, TooLargeError
  /// for a plaintext of more than 1 GiB, and CipherUnavailableError.
  std::vector<std::uint8_t> GetEncryptedBytes();

 private:
  const char* CipherName() const override;

  std::vector<std::uint8_t> key_;
  std::vector<std::uint8_t> iv_;
};

}  // namespace zuna_sec
