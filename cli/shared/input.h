// Reading inputs, standard input included.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/shared/keys.h"
#include "toolkit/document/open.h"
#include "toolkit/error.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// The bytes of the file at `path`, or of standard input for "-". Throws kit::IoError where it cannot be read
/// and kit::FileTooLargeError where it has more than `limit` bytes.
std::vector<std::uint8_t> ReadInput(const std::string& path, std::size_t limit);

/// An input and the key that opened it, one of those that were tried.
struct OpenedInput {
  zuna_toolkit::OpenedFile file;
  const CipherKey* key;
};

/// Tells why none of `keys` opens an encrypted file, where the last one failed with `error`: throws Failure
/// (kWrongKey) where it has an empty key or several were tried, and otherwise `error`.
[[noreturn]] void RefuseKeys(const std::vector<std::uint8_t>& bytes, const std::string& name,
                             const Keys& keys, const zuna_toolkit::Error& error);

/// Decrypts the bytes of a file with the first of `keys` that opens it. `name` is what messages call it.
/// Throws zuna_toolkit::Error, or Failure (kWrongKey) where none of several keys opens it.
OpenedInput DecryptInput(const std::vector<std::uint8_t>& bytes, const std::string& name, const Keys& keys,
                         zuna_toolkit::Accept accept = zuna_toolkit::Accept::kEncrypted);

/// The same. Where rescue may help, the remedy says that too. Nothing can be saved of an encrypted file that
/// ends inside its header, and hardly anything of another one as short.
OpenedInput DecryptOrNameRescue(const std::vector<std::uint8_t>& bytes, const std::string& name,
                                const Keys& keys,
                                zuna_toolkit::Accept accept = zuna_toolkit::Accept::kEncrypted);

/// The same error; where rescue may help, its remedy says that too.
zuna_toolkit::Error WithRescue(const zuna_toolkit::Error& error);

/// What `read` returns of an input. An error that it throws is WithRescue().
template <typename Read>
auto ReadOrNameRescue(Read read) {
  try {
    return read();
  } catch (const zuna_toolkit::Error& error) {
    throw WithRescue(error);
  }
}

/// Reads an input and decrypts it with the first of `keys` that opens it. Throws kit::IoError, and what
/// DecryptOrNameRescue() throws.
OpenedInput OpenInput(const std::string& path, const Keys& keys,
                      zuna_toolkit::Accept accept = zuna_toolkit::Accept::kEncrypted);

/// The error of the file `bytes`, which failed with `error` when it was taken as encrypted or plain. What is
/// no plain show or log either fails as it does where only encrypted files are accepted; one of another kind
/// than expected is named as such. It is WithRescue().
zuna_toolkit::Error ErrorOfInput(const zuna_toolkit::Error& error, const std::vector<std::uint8_t>& bytes,
                                 const std::string& name, const Keys& keys);

/// What `read` returns of the file `bytes`, encrypted or plain, which messages call `name`. Throws what
/// DecryptInput() and `read` throw, as ErrorOfInput() tells it.
template <typename Read>
auto ReadEncryptedOrPlain(const std::vector<std::uint8_t>& bytes, const std::string& name, const Keys& keys,
                          Read read) {
  try {
    zuna_toolkit::OpenedFile file =
        DecryptInput(bytes, name, keys, zuna_toolkit::Accept::kEncryptedOrPlain).file;
    return read(file);
  } catch (const zuna_toolkit::Error& error) {
    throw ErrorOfInput(error, bytes, name, keys);
  }
}

/// A show or log of an input that may be plain.
struct ReadInputDocument {
  zuna_toolkit::Document document;
  bool is_encrypted;
};

/// Reads the show or log at `path`. Throws kit::IoError, and what the other function throws.
ReadInputDocument ReadEncryptedOrPlain(const std::string& path, const Keys& keys,
                                       zuna_toolkit::Expected expected = zuna_toolkit::Expected::kAny);

}  // namespace zuna_cli
