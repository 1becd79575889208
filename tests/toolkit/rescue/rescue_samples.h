// Shows and logs of many songs, and what comes back of them.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_test {

/// A part of a file.
struct Part {
  std::string number;
  std::size_t begin;
  std::size_t end;
  std::string bytes;  ///< of the song, or what its writer writes for a file with this song alone
};

/// What is left of a plain file.
inline zuna_toolkit::Rescued RescuedOf(const std::string& plaintext) {
  return zuna_toolkit::Rescue(FromText(plaintext), "file", {}, zuna_toolkit::Accept::kEncryptedOrPlain);
}

/// `bytes` with so many bytes changed, whose offsets are in `offsets` then.
inline std::string Damaged(std::string bytes, std::size_t count, std::mt19937& random,
                           std::set<std::size_t>& offsets) {
  while (offsets.size() < count) {
    const std::size_t offset = random() % bytes.size();
    if (!offsets.insert(offset).second) continue;
    bytes[offset] = static_cast<char>(static_cast<unsigned>(bytes[offset]) ^ (1 + random() % 255));
  }
  return bytes;
}

/// Whether one of the offsets is in `part`.
inline bool Touches(const std::set<std::size_t>& offsets, const Part& part) {
  const auto first = offsets.lower_bound(part.begin);
  return first != offsets.end() && *first < part.end;
}

}  // namespace zuna_test
