// The head of a song of a damaged legacy show: its fields before its events (docs/format-0.md, "song_data").
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/rescue/internal/record_bytes.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

/// The fields of a song before its events.
struct SongHead {
  std::size_t record_length = 0;  ///< that it states
  std::string_view number;
  std::string_view name;
  std::string_view division;
  std::string_view length;
  std::string_view tracks;  ///< with their count
  std::size_t stated_events = 0;
  std::size_t events = 0;            ///< where they begin
  ByteRange unread = {};             ///< before them, where it is told from behind
  std::vector<std::string> missing;  ///< remarks about the fields that cannot be read
};

/// Where the events of `head` end as their count states. The count is right where the timeline is there.
std::size_t EndOfStatedEvents(const SongHead& head);

/// Whether the record of `head`, which begins at `begin`, states the length that ends there too.
bool StatesItsLength(const SongHead& head, std::size_t begin);

/// The head of the song at `in`, as far as it goes; `in` is not ok where it is not whole.
SongHead ReadSongHead(RecordCursor& in, Steps& steps);

/// The head of the song from `begin` on, as far as it can be told from behind: from the events before the
/// timeline at `timeline` and from their count. Nothing where no event is before the timeline.
std::optional<SongHead> FindSongHead(std::string_view bytes, std::size_t begin, std::size_t timeline,
                                     Steps& steps);

}  // namespace zuna_toolkit
