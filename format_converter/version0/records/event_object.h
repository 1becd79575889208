#pragma once

// The event record of the legacy formats: docs/format-0.md, "event_object".

#include <cstdint>
#include <iosfwd>
#include <map>
#include <type_traits>
#include <vector>

#include "kit/api.h"

namespace version0 {

/// One MIDI message of a legacy song. On a little-endian host its memory image is its file image of 12 bytes.
struct ZUNA_API EventObject {
  std::uint32_t delta_time = 0;  ///< ticks since the previous event of the same voice; not compared
  std::uint32_t abs_time = 0;    ///< ticks since the beginning of the song
  std::uint8_t status_high = 0;  ///< the MIDI status byte with its channel cleared
  std::uint8_t data1 = 0;        ///< the first data byte
  std::uint8_t data2 = 0;        ///< 0 in messages with one data byte
  std::uint8_t track_id = 0;     ///< the track; its low nibble is the MIDI channel

  EventObject() = default;
  /// Reads the 12 bytes of an event.
  explicit EventObject(std::istream& is);
  /// Sets the fields.
  EventObject(unsigned int new_delta_time, unsigned int new_abs_time, unsigned char new_status_high,
              unsigned char new_data1, unsigned char new_data2, unsigned char new_track_id);

  /// `==` is true when all fields but delta_time are equal, and otherwise throws Version0Error with the first
  /// field that differs. `!=` is its negation and throws the same.
  ///@{
  bool operator==(const EventObject& b) const;
  bool operator!=(const EventObject& b) const;
  ///@}

  /// The order of simultaneous events as the legacy program defines it. It is not a strict weak order and
  /// cannot sort a list.
  bool operator<(const EventObject& b) const;
};

static_assert(sizeof(EventObject) == 4 + 4 + 1 + 1 + 1 + 1 && std::is_trivially_copyable_v<EventObject>);

/// Writes "EventObject(0, 480, 0x90, 60, 100, 1)" and leaves the stream in decimal without base prefix.
ZUNA_API std::ostream& operator<<(std::ostream& os, const EventObject& event);

/// The events of a song by track id. The events of a track are in the order in which they were added.
using EventMap = std::map<std::uint8_t, std::vector<EventObject>>;

}  // namespace version0
