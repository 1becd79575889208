// Documents out of the bytes of an input.

#pragma once

#include <istream>
#include <iterator>
#include <optional>
#include <string>

#include "fuzz/cost.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/document/open.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"

namespace fuzz {

using zuna_toolkit::Document;
using zuna_toolkit::OpenedFile;

inline OpenedFile Open(const std::string& bytes) {
  return OpenedFile::FromBytes({bytes.begin(), bytes.end()}, "input", {},
                               zuna_toolkit::Accept::kEncryptedOrPlain);
}

/// The document in `bytes`; none where they are refused, which is a zuna_toolkit::Error.
inline std::optional<Document> ReadDocument(const std::string& bytes) {
  try {
    OpenedFile file = Open(bytes);
    return Bounded("reading a document", bytes.size(), [&] { return zuna_toolkit::ReadDocument(file); });
  } catch (const zuna_toolkit::Error&) {
    return std::nullopt;
  }
}

/// The decrypted file that `document` is written as. Throws zuna_toolkit::Error.
inline std::string Written(const Document& document) {
  const auto cipher = zuna_toolkit::CipherStreamOf(document, {});
  return {std::istreambuf_iterator<char>(cipher->GetStream()), {}};
}

/// Whether two documents hold the same, song by song.
inline bool HoldTheSame(const Document& a, const Document& b) {
  bool same = true;
  zuna_toolkit::Compare(a, b, [&](const zuna_toolkit::Difference&) { same = false; });
  return same;
}

}  // namespace fuzz
