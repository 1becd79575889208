// One song of a page.
#pragma once

#include <string>
#include <vector>

#include "toolkit/checking/finding.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/song_time.h"
#include "zuna_midi/song_data.h"

namespace zuna_toolkit {

/// The findings about one song, or about a whole document.
struct ViewedFindings {
  std::vector<Finding> findings;  ///< kMostOfAKind at most
  std::size_t more = 0;           ///< how many there are besides
};

/// What the list of songs and the head of a song tell.
struct SongFacts {
  std::string anchor;    ///< the id of the section of the song
  std::string heading;   ///< "2a Scarborough Fair"
  std::string duration;  ///< "0:25.5"; empty where the song has no division
};

/// The facts of the song number `index` of a page, from 0, which is played in `time`.
SongFacts FactsOf(const zuna_midi::SongData& song, const SongTime& time, std::size_t index);

/// A section of the page: the song, its picture, and the same as tables. `notes` is markup: what is found and
/// what changed.
std::string SongSection(const ViewedSong& song, const SongFacts& facts, const std::string& notes);

/// The picture alone, as a document in SVG.
std::string SongDrawing(const ViewedSong& song, const SongFacts& facts);

/// The findings as a list; empty for none.
std::string FindingsList(const ViewedFindings& findings);

}  // namespace zuna_toolkit
