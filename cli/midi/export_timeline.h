#pragma once

#include <string>

#include "TL/timeline.h"
#include "cli/midi/report.h"
#include "cli/midi/smf_file.h"

namespace zuna_cli::midi {

/// Counts an event whose time is too far from the event before.
void CountTooLate(Report& report);

/// The first track of a MIDI file: the name of the song and its tempos, meters and keys in order of time.
/// What MIDI cannot hold is added to `report`; the end of the track is left to the caller.
smf::Track ExportTimeline(const TL::Timeline& timeline, const std::string& song_name, Report& report);

}  // namespace zuna_cli::midi
