// The bytes of an output, which are read back before they count.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/document/document.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// The encrypted bytes of `document`, which messages call `name`. Where `verify` says so, they are read back
/// and compared with it. Throws Failure: what EncryptedBytes() throws, and (kInternal) where they do not hold
/// the same; and zuna_toolkit::Error.
std::vector<std::uint8_t> Sealed(const zuna_toolkit::Document& document, const CipherKey& key,
                                 const std::string& name, bool verify);

}  // namespace zuna_cli
