#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>

#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

/// An input file, decrypted.
class InputFile {
 public:
  /// Decrypts the file at `path`, or standard input for "-". Throws Failure.
  InputFile(const std::string& path, const CipherKey& key);

  /// The file at `path`, which may be encrypted or plain. Throws Failure.
  static InputFile EncryptedOrPlain(const std::string& path, const CipherKey& key);

  /// What messages call it.
  const std::string& name() const { return name_; }

  /// The plaintext.
  std::iostream& stream() { return cipher_->GetStream(); }
  zuna_sec::TwoFishCipherStream& cipher() { return *cipher_; }

 private:
  using Cipher = std::unique_ptr<zuna_sec::TwoFishCipherStream>;
  InputFile(std::string name, Cipher cipher) : name_(std::move(name)), cipher_(std::move(cipher)) {}

  std::string name_;
  Cipher cipher_;
};

/// Puts the stream back to its beginning, whatever a reader left behind.
void Rewind(std::istream& stream);

/// The first `size` bytes of the stream, or all where it has less; the stream is at its beginning then.
std::string StartOf(std::istream& stream, std::size_t size);

}  // namespace zuna_cli
