#pragma once

#include <cstdint>
#include <deque>

#include "kit/api.h"

namespace version0 {

/// The id of every drum track: channel 10, the General MIDI percussion channel, counted from 0.
inline constexpr std::uint8_t kDrumId = 9;

/// The ids that tracks which are no drums are given, in this order: every byte from 1 to 255 whose low nibble
/// is not 9, 239 in all.
ZUNA_API std::deque<unsigned char> get_non_drum_ids();

}  // namespace version0
