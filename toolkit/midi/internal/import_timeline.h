// The timeline of a song that is made of a MIDI file (docs/midi.md).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "TL/timeline.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"

namespace zuna_toolkit::midi {

/// The tempos, meters and keys of all tracks in order of time, without bar labels. A tempo of 500000 µs and a
/// meter of 4/4 stand at the beginning where the file has none there, as MIDI has it. Counts every other meta
/// event in `report`, but not the track names.
TL::Timeline ImportTimeline(const smf::File& file, Report& report);

/// No song gets more bar labels than these; a file of some bytes could ask for billions.
constexpr std::size_t kMaxBarLabels = 10'000;

/// The labels "1", "2", … at the bars that the meters give, from the first meter on and before `song_length`
/// (ticks). A meter begins a new bar wherever it stands. A bar that would not begin on a whole tick begins on
/// the tick before. The meters stand in ascending order of time, with numerators and denominators above 0.
/// The list ends after kMaxBarLabels labels.
std::vector<TL::BarsBeats> MakeBarLabels(const std::vector<TL::Meter>& meters, std::uint16_t division,
                                         std::uint32_t song_length);

}  // namespace zuna_toolkit::midi
