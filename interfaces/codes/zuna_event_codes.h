#pragma once

// The event codes of edits and their names.

#include <cstdint>
#include <map>
#include <string>

#include "kit/api.h"

namespace codes {

/// The event codes of the edits in a log. They are the letters of the legacy format, which has no fermatas.
///@{
inline constexpr std::uint8_t kVamp = '@';
inline constexpr std::uint8_t kRepeat = 'A';
inline constexpr std::uint8_t kCut = 'B';
inline constexpr std::uint8_t kTranspose = 'C';
inline constexpr std::uint8_t kTempoScale = 'D';
inline constexpr std::uint8_t kMarker = 'E';
inline constexpr std::uint8_t kClick = 'L';
inline constexpr std::uint8_t kFermata = 'M';
inline constexpr std::uint8_t kCaesura = 'N';
///@}

/// The name of the edit of an event code: "Vamp", "Repeat", "Cut", "Transpose", "TempoScale", "Marker",
/// "Click", "Fermata" or "Caesura". Has an entry for every code above and no other.
ZUNA_API extern const std::map<std::uint8_t, std::string> editNameByZunaEventCode;

}  // namespace codes
