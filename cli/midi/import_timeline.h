#pragma once

#include "TL/timeline.h"
#include "cli/midi/report.h"
#include "cli/midi/smf_file.h"

namespace zuna_cli::midi {

/// The tempos, meters and keys of all tracks in order of time, without bar labels. A tempo of 500000 µs and a
/// meter of 4/4 stand at the beginning where the file has none there, as MIDI has it. Counts every other meta
/// event in `report`, but not the track names.
TL::Timeline ImportTimeline(const smf::File& file, Report& report);

}  // namespace zuna_cli::midi
