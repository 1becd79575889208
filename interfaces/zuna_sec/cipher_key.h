// The key material of encrypted files; docs/envelope.md says how it is used.

#pragma once

#include <cstdint>
#include <vector>

/// The key material for encrypted files, handed unchanged to every cipher stream. Both may be empty, of any
/// length.
struct CipherKey {
  std::vector<std::uint8_t> key;  ///< secret
  std::vector<std::uint8_t> iv;   ///< the initialisation vector
};
