#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <type_traits>
#include <vector>

#include "kit/api.h"

namespace version0 {

/// One MIDI message of a legacy song. Its memory image is its file image of 12 bytes.
struct ZUNA_API EventObject {
  std::uint32_t delta_time = 0;  ///< ticks since the previous event of the same voice; not compared
  std::uint32_t abs_time = 0;    ///< ticks since the song's beginning
  std::uint8_t status_high = 0;  ///< the MIDI status byte without its channel
  std::uint8_t data1 = 0;        ///< the first data byte
  std::uint8_t data2 = 0;        ///< 0 where the message has only one data byte
  std::uint8_t track_id = 0;     ///< the track; its low nibble is the MIDI channel

  EventObject() = default;
  /// Reads the 12 bytes of an event.
  explicit EventObject(std::istream& is);
  /// An event with these values.
  EventObject(unsigned int delta, unsigned int absolute, unsigned char status, unsigned char first,
              unsigned char second, unsigned char track);

  /// True when all but delta_time is equal. Never false: throws Version0Error naming the first field that
  /// differs.
  bool operator==(const EventObject& b) const;
  /// False, or the exception of operator==.
  bool operator!=(const EventObject& b) const;

  /// The order of simultaneous events, kept as the product has always had it: not a lexicographic order, nor
  /// a strict weak one that could sort a list.
  bool operator<(const EventObject& b) const;
};

static_assert(sizeof(EventObject) == 4 + 4 + 1 + 1 + 1 + 1 && std::is_trivially_copyable_v<EventObject>);

/// Writes "EventObject(0, 480, 0x90, 60, 100, 1)" and leaves the stream in decimal without base prefix.
ZUNA_API std::ostream& operator<<(std::ostream& os, const EventObject& event);

/// The events of a song by track id, each track's in the order in which they were added.
using EventMap = std::map<std::uint8_t, std::vector<EventObject>>;

}  // namespace version0
