// One song of a page.
#pragma once

#include <string>
#include <vector>

#include "CL/song_log.h"
#include "toolkit/checking/finding.h"
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

/// A section of the page: the song, its picture, its edits and voices as tables, and its findings. `log` is
/// null where there is none.
std::string SongSection(const zuna_midi::SongData& song, const CL::SongLog* log, SongTime time,
                        const SongFacts& facts, const ViewedFindings& findings);

/// The findings as a list; empty for none.
std::string FindingsList(const ViewedFindings& findings);

}  // namespace zuna_toolkit
