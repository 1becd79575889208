// Writing documents.
#pragma once

#include <memory>
#include <string>

#include "kit/api.h"
#include "toolkit/document/document.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_toolkit {

/// A cipher stream that holds the plaintext of `document` at its version. Nothing is encrypted yet:
/// TwoFishCipherStream::WriteToFile() encrypts it into a file, GetEncryptedBytes() into bytes; what they
/// throw is in their header. Throws Error: kIncompleteSong where a program built a song without one of its
/// parts, ErrorKind::kBadInput for a document that its version cannot hold.
ZUNA_API std::unique_ptr<zuna_sec::TwoFishCipherStream> CipherStreamOf(const Document& document,
                                                                       const CipherKey& key);

/// Writes `document`, encrypted, to the file at `path` in one step: the old file stays until the new one is
/// complete. Throws Error: ErrorKind::kIo where it cannot be written, and what CipherStreamOf() throws.
ZUNA_API void WriteDocument(const Document& document, const std::string& path, const CipherKey& key);

}  // namespace zuna_toolkit
