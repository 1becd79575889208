#pragma once

// The track ids of legacy songs, and the names of drum voices: docs/conversion.md.

#include <cstdint>
#include <deque>
#include <string_view>

#include "kit/api.h"

namespace version0 {

/// The id of every drum track: channel 10, the General MIDI percussion channel, counted from 0.
inline constexpr std::uint8_t kDrumId = 9;

/// The names of drum voices. They are compared byte by byte.
///@{
inline constexpr std::string_view kDrumKitName = "Drum Kit";
inline constexpr std::string_view kDrumsName = "Drums";
///@}

/// Whether a voice with this name is a drum voice, which gets the id kDrumId in the legacy format.
inline bool is_drum_name(std::string_view name) { return name == kDrumKitName || name == kDrumsName; }

/// The ids for tracks that are not drums, in the order in which they are assigned: every byte from 1 to 255
/// whose low nibble is not 9, 239 in all.
ZUNA_API std::deque<unsigned char> get_non_drum_ids();

}  // namespace version0
