// Copies the edits that format 0.0 has no room for from one log to another (docs/conversion.md).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kit/api.h"
#include "toolkit/document/document.h"

namespace zuna_toolkit {

/// The destination with the attaccas and fermatas of the source, and what copying them did.
struct FermataCopy {
  Document document;                     ///< the destination as it is now
  std::size_t fermatas = 0;              ///< that the source has
  std::size_t attaccas = 0;              ///< that the source has and are not 0
  std::size_t songs = 0;                 ///< of the source that have any of them
  std::size_t erased_fermatas = 0;       ///< of the destination, that the song of the source does not have
  std::size_t erased_attaccas = 0;       ///< of the destination, that are not 0 and differ
  std::vector<std::string> erased_in{};  ///< the numbers of the songs that lose any of them
};

/// Gives every song log of `destination` that `source` has too the attacca and all fermatas of the source's,
/// instead of its own. The destination keeps its version. Throws Error (ErrorKind::kBadInput) unless both are
/// logs of a current version and the destination has all songs of the source.
ZUNA_API FermataCopy CopyFermatas(const Document& source, const Document& destination);

}  // namespace zuna_toolkit
