// Key files.
#pragma once

#include <string>
#include <string_view>

#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// The key and IV of a text with the lines "key = HEX" and "iv = HEX"; "#" begins a comment. `name` is the
/// file in messages, which never repeat what the text says. Throws Failure (kBadInput) with the line.
CipherKey ParseKeyFile(std::string_view text, const std::string& name);

/// The key and IV of the file at `path`; both empty for an empty path. Throws Failure.
CipherKey LoadKey(const std::string& path);

/// The key file to take: `option` where it is given, else what ZUNA_KEY_FILE names, else none.
std::string KeyFilePath(const std::string& option);

}  // namespace zuna_cli
