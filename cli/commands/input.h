// Reading inputs, standard input included.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/document/open.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// The bytes of the file at `path`, or of standard input for "-". Throws kit::IoError where it cannot be read
/// and kit::FileTooLargeError where it has more than `limit` bytes.
std::vector<std::uint8_t> ReadInput(const std::string& path, std::size_t limit);

/// Reads and decrypts an input. Throws zuna_toolkit::Error.
zuna_toolkit::OpenedFile OpenInput(const std::string& path, const CipherKey& key,
                                   zuna_toolkit::Accept accept = zuna_toolkit::Accept::kEncrypted);

/// A show or a log of any version. Throws zuna_toolkit::Error.
zuna_toolkit::Document ReadAny(zuna_toolkit::OpenedFile& file);

/// A show of any version. Throws Failure (kBadInput) for a log, and zuna_toolkit::Error.
zuna_toolkit::Document ReadShow(zuna_toolkit::OpenedFile& file);

/// What a file holds, which has to be a show. Throws as ReadShow().
zuna_toolkit::FileType RequireShow(zuna_toolkit::OpenedFile& file);

/// What a file holds, which has to be of a current version. Throws zuna_toolkit::Error.
zuna_toolkit::FileType RequireCurrent(zuna_toolkit::OpenedFile& file);

}  // namespace zuna_cli
