// What format 0.0 has one byte for (docs/format-0.md).
#pragma once

#include <cstddef>

namespace zuna_toolkit {

inline constexpr std::size_t kMostLegacySongs = 255;    ///< of a show
inline constexpr std::size_t kMostLegacyTracks = 255;   ///< of a song
inline constexpr std::size_t kLongestLegacyText = 255;  ///< in bytes

}  // namespace zuna_toolkit
