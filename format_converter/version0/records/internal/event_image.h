#pragma once

// The memory image of an event and its image in a file: docs/format-0.md, "event_object".

#include <bit>
#include <cstdint>

#include "format_converter/version0/records/event_object.h"

namespace version0 {

/// Files are little-endian: on any other host the bytes of the times are swapped.
inline constexpr bool kSwapsTimes = std::endian::native == std::endian::big;

inline std::uint32_t swapped(std::uint32_t value) {
  return value << 24 | (value & 0xFF00) << 8 | (value >> 8 & 0xFF00) | value >> 24;
}

/// From either image to the other where kSwapsTimes is true.
inline EventObject swapped(EventObject event) {
  event.delta_time = swapped(event.delta_time);
  event.abs_time = swapped(event.abs_time);
  return event;
}

}  // namespace version0
