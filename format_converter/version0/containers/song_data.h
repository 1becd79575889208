#pragma once

// A song of a legacy show: docs/format-0.md, "song_data".
// Its conversions are in conversions/show_conversion.cpp.

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "format_converter/version0/containers/timeline.h"
#include "format_converter/version0/records/event_object.h"
#include "format_converter/version0/records/track_object.h"
#include "kit/api.h"

namespace zuna_midi {
struct SongData;
}

namespace version0 {

/// One song of a legacy show.
struct ZUNA_API SongData {
  std::string song_number;          ///< text, such as "12" or "12a"
  std::string song_name;            ///< the title
  std::uint16_t division = 0;       ///< ticks per quarter note
  std::uint32_t song_length = 0;    ///< ticks; carried unchanged
  std::vector<TrackObject> tracks;  ///< the voices, in the order of the file
  EventMap events;                  ///< by track id, which need not be in `tracks`
  Timeline timeline;                ///< with the song's name and length of its own

  SongData() = default;

  /// Reads a song record. Throws what the timeline's reader throws, and std::length_error when the stream
  /// ends before a string.
  explicit SongData(std::istream& is);

  /// Converts a current song. Drum voices get id 9, the others the ids of get_non_drum_ids() in their order.
  /// Throws TrackCountError for more voices than there are ids, std::logic_error for a timeline without a
  /// meter and a tempo at its start.
  explicit SongData(const zuna_midi::SongData& song);

  /// Converts this song to the current model. Throws what the timeline's conversion throws, and
  /// std::out_of_range for an event whose track id has no track.
  std::shared_ptr<zuna_midi::SongData> get_version_1_0() const;

  /// Throws std::length_error for a text of 256 bytes or more, std::out_of_range ("vector") for a song
  /// without events; the fields before it have been written.
  void write_binary(std::ostream& os) const;
};

/// `==` is true when the songs are equal, and otherwise throws Version0Error with the first difference. `!=`
/// is its negation and throws the same. Additional tracks and events of `b` are ignored. When the events of a
/// track differ, those of both songs are printed to standard output first.
///@{
ZUNA_API bool operator==(const SongData& a, const SongData& b);
ZUNA_API bool operator!=(const SongData& a, const SongData& b);
///@}

}  // namespace version0
