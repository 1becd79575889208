// A show as a page to look at in a browser (docs/view.md).
#pragma once

#include <string>

#include "kit/api.h"
#include "toolkit/document/document.h"

namespace zuna_toolkit {

/// A page in HTML that shows the songs of `show`, with the edits of `log` unless it is null. `digest` is that
/// of the show's file and may be empty. The page needs nothing but itself: no network, and no script to be
/// read. What comes from the documents is text in it, never markup.
///
/// Things of one kind in a song that are more than 500, and songs after the first 1000, are counted instead
/// of shown. Where a voice has more notes than the picture has room for, their number is drawn. So a page
/// takes no more than 64 bytes for a byte of the files, beside 4 MiB; time is O(n log n).
///
/// Throws Error: kWrongKind where `show` is no show, kWrongCompanion where `log` is no log,
/// kUnrelatedCompanion where both have songs and none agrees in number and name, ErrorKind::kBadInput for a
/// legacy song that cannot be converted.
ZUNA_API std::string ShowPage(const Document& show, const Document* log, const std::string& digest);

}  // namespace zuna_toolkit
