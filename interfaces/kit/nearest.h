#pragma once

// What a mistyped word may have been meant to be. Not part of the contract with the converter: a product that
// replaces platform/ for the converter alone need not supply it.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kit/api.h"

namespace kit {

/// The number of bytes to insert, remove or replace and of neighbours to exchange that make `to` of `from`,
/// where no part is changed twice (optimal string alignment distance: L. Boytsov, Indexing methods for
/// approximate dictionary searching, 2011, section 2.2; the changes are those of F. Damerau, 1964).
ZUNA_API std::size_t EditDistance(std::string_view from, std::string_view to);

/// `; did you mean "…"?` with the word of `known` that is nearest to `word`; the first one of several.
/// Nothing where more than a third of `word` would change, or where it is longer than 64 bytes.
ZUNA_API std::string Suggestion(std::string_view word, const std::vector<std::string>& known);

}  // namespace kit
