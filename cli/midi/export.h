#pragma once

#include <stdexcept>

#include "cli/midi/report.h"
#include "cli/midi/smf_file.h"
#include "zuna_midi/song_data.h"

namespace zuna_cli::midi {

/// A song that no MIDI file can hold; the message tells why and what to do.
class ExportError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// `song` as a MIDI file of format 1: a first track with its name, tempos, meters and keys, then one track a
/// voice. What the file cannot hold is added to `report`. Throws ExportError.
smf::File ExportSong(const zuna_midi::SongData& song, Report& report);

}  // namespace zuna_cli::midi
