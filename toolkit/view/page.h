// A show as a page to look at in a browser (docs/view.md).
#pragma once

#include <optional>
#include <string>

#include "kit/api.h"
#include "toolkit/document/document.h"

namespace zuna_toolkit {

/// What is drawn besides the show.
struct PageContent {
  const Document* log = nullptr;           ///< whose edits are drawn
  std::optional<std::string> song = {};    ///< the number of the only song that is shown
  const Document* earlier_show = nullptr;  ///< what changed since this one is marked
  const Document* earlier_log = nullptr;   ///< the same for the edits; not used without `log`
  bool losses = false;                     ///< instead, what format 0.0 does not keep is marked
  std::string digest = {};                 ///< SHA-256 of the show's file, to be told; may be empty
};

/// A page in HTML that shows the songs of `show`. The page needs nothing but itself: no network, and no
/// script to be read. What comes from the documents is text in it, never markup.
///
/// Things of one kind in a song that are more than 500, and songs after the first 1000, are counted instead
/// of shown. Where a voice has more notes than the picture has room for, their number is drawn. So a page
/// takes no more than 64 bytes for a byte of the files, beside 4 MiB; time is O(n log n).
///
/// Throws Error: kWrongKind where `show` is no show, kWrongCompanion where `log` is no log,
/// kUnrelatedCompanion where both have songs and none agrees in number and name, kSongNotFound where there is
/// no song of the number asked for, ErrorKind::kBadInput for a document that cannot be converted as the
/// comparison needs it.
ZUNA_API std::string ShowPage(const Document& show, const PageContent& content = {});

/// The picture of one song as an SVG 1.1 document. `content.song` may be left out where the show has just one
/// song. Throws what ShowPage() throws, and kSongNotFound also where the show has several songs and none was
/// asked for.
ZUNA_API std::string SongPicture(const Document& show, const PageContent& content = {});

}  // namespace zuna_toolkit
