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

}  // namespace zuna_cli
