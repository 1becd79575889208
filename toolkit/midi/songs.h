// Songs from and to Standard MIDI Files (docs/midi.md).
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kit/api.h"
#include "toolkit/error.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"
#include "zuna_midi/song_data.h"

namespace zuna_toolkit::midi {

/// What a conversion from or to MIDI did not keep, and what else its user should know.
struct Report {
  Tally not_kept;                    ///< by kind
  std::vector<std::string> remarks;  ///< one sentence each
};

/// `song` as a MIDI file of format 1: a first track with its name, tempos, meters and keys, then one track a
/// voice. What the file cannot hold is added to `report`. Throws Error (ErrorKind::kBadInput) without a file
/// for a song that no MIDI file can hold: its division is not 1 to 32767, or it has more than 65534 voices.
ZUNA_API smf::File ExportSong(const zuna_midi::SongData& song, Report& report);

/// The song that `file` holds: a voice for every channel of every track that has messages, a timeline of its
/// tempos, meters and keys, and bar labels computed from the meters. `fallback_name` is the song's name when
/// the file names none. What the song cannot hold is added to `report`. Throws Error (ErrorKind::kBadInput)
/// without a file for a file of more than 65535 voices.
ZUNA_API std::shared_ptr<zuna_midi::SongData> ImportSong(const smf::File& file,
                                                         const std::string& song_number,
                                                         const std::string& fallback_name, Report& report);

}  // namespace zuna_toolkit::midi
