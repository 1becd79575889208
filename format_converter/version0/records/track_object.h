#pragma once

// The track record of the legacy formats: docs/format-0.md, "track_object".

#include <cstdint>
#include <iosfwd>
#include <string>

#include "kit/api.h"

namespace version0 {

/// A track of a legacy song.
struct ZUNA_API TrackObject {
  std::uint8_t track_id;   ///< its low nibble is the MIDI channel; 9 for every drum track
  std::string track_name;  ///< at most 255 bytes

  /// Reads what write_binary() writes.
  explicit TrackObject(std::istream& is);
  /// Sets the fields.
  TrackObject(std::uint8_t new_track_id, const std::string& new_track_name);

  /// Throws std::length_error after the id for a name of 256 bytes or more.
  void write_binary(std::ostream& os) const;

  /// By track id.
  bool operator<(const TrackObject& b) const;
};

/// `==` is true when id and name are equal, and otherwise throws Version0Error with what differs. `!=` is its
/// negation and throws the same.
///@{
ZUNA_API bool operator==(const TrackObject& a, const TrackObject& b);
ZUNA_API bool operator!=(const TrackObject& a, const TrackObject& b);
///@}

}  // namespace version0
