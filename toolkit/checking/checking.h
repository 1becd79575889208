// Whether a document is sensible (docs/checks.md).
#pragma once

#include <functional>

#include "kit/api.h"
#include "toolkit/checking/finding.h"
#include "toolkit/document/document.h"

namespace zuna_toolkit {

/// Takes findings one by one, so that they need not all be held in memory.
using FindingSink = std::function<void(const Finding&)>;

/// Hands everything that is not sensible in `document` to `sink`, song by song in the order of the document.
/// Any kind and version is checked as it stands, a legacy one by its own records. No content is refused.
/// Time is linear in the document, O(n log n) in bar labels that are in disorder; memory is linear in the bar
/// labels of one song. Throws what `sink` throws.
ZUNA_API void Check(const Document& document, const FindingSink& sink);

}  // namespace zuna_toolkit
