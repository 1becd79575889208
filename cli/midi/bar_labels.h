#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "TL/timeline.h"

namespace zuna_cli::midi {

/// No song gets more bar labels than these; a hostile file could ask for billions.
constexpr std::size_t kMaxBarLabels = 100'000;

/// The labels "1", "2", … at the bars that the meters give, from the first meter on and before `song_length`
/// (ticks). A meter begins a new bar wherever it stands. A bar that would not begin on a whole tick begins on
/// the tick before. The meters stand in ascending order of time, with numerators and denominators above 0.
/// The list ends after kMaxBarLabels labels.
std::vector<TL::BarsBeats> MakeBarLabels(const std::vector<TL::Meter>& meters, std::uint16_t division,
                                         std::uint32_t song_length);

}  // namespace zuna_cli::midi
