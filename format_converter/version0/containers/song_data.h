#pragma once

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
  std::uint16_t division = 0;       ///< ticks of a quarter note
  std::uint32_t song_length = 0;    ///< carried unchanged
  std::vector<TrackObject> tracks;  ///< the voices, in the order of the file
  EventMap events;                  ///< a track id here need not stand in `tracks`
  Timeline timeline;                ///< with the song's name and length of its own

  SongData() = default;

  /// Reads a song record. Throws what the timeline's reader throws, and std::length_error where the stream
  /// ends before a string.
  explicit SongData(std::istream& is);

  /// The legacy form of a current song: drum voices get id 9, the others ids from the pool in their order.
  /// Throws TrackCountError for more voices than there are ids, std::logic_error for a timeline without a
  /// meter and a tempo at its start.
  explicit SongData(const zuna_midi::SongData& song);

  /// The current form of this song. Throws what the timeline's conversion throws, and std::out_of_range for
  /// an event whose track id stands in no track.
  std::shared_ptr<zuna_midi::SongData> get_version_1_0() const;

  /// Throws std::length_error for a text of 256 bytes or more, std::out_of_range ("vector") for a song
  /// without events; what stands before it has been written.
  void write_binary(std::ostream& os) const;
};

/// True when the songs are equal. Never false: throws Version0Error naming the first difference. Tracks and
/// events that `b` has beyond those of `a` do not count. Where two events differ, both tracks' events are
/// printed to standard output first.
ZUNA_API bool operator==(const SongData& a, const SongData& b);
/// False, or the exception of operator==.
ZUNA_API bool operator!=(const SongData& a, const SongData& b);

}  // namespace version0
