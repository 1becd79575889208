// What there is to tell about a document: names and counts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/api.h"
#include "toolkit/document/document.h"

namespace zuna_toolkit {

/// How many things of one kind a song has.
struct Count {
  std::string_view key;   ///< as the text form calls them, such as "tempoScales"
  std::string_view one;   ///< for people: "tempo scale"
  std::string_view many;  ///< "tempo scales"
  std::size_t value = 0;  ///< how many there are
};

/// One song of a show or a log.
struct SongSummary {
  std::string number;                     ///< the song number
  std::string name;                       ///< the title
  std::optional<std::uint16_t> division;  ///< ticks of a quarter note; a legacy log has none
  std::uint32_t length = 0;               ///< ticks
  std::optional<std::uint8_t> attacca;    ///< of a current log
  /// Of a show: voices, events, bars, tempos, meters. Of a log: the edits by kind, in the order of the text
  /// form.
  std::vector<Count> counts;
};

/// What the header of a log holds besides the show's name.
struct LogHeader {
  std::string label;                                 ///< carried unchanged
  std::string identifier;                            ///< as UUID text
  std::pair<std::uint16_t, std::uint16_t> tag_pair;  ///< carried unchanged
};

/// What a whole document says besides its songs.
struct Summary {
  std::optional<std::string> show_name;  ///< a legacy show has none
  std::optional<LogHeader> log;          ///< of a log
};

/// What there is to tell about `document` besides its songs.
ZUNA_API Summary SummariseWhole(const Document& document);

/// Takes one song. It is gone afterwards, so many songs take no memory.
using SongSummarySink = std::function<void(const SongSummary&)>;

/// Hands the songs to `sink`, in the order of the document. Throws Error (kIncompleteSong) where a program
/// built a song without one of its parts, and what `sink` throws.
ZUNA_API void SummariseSongs(const Document& document, const SongSummarySink& sink);

}  // namespace zuna_toolkit
