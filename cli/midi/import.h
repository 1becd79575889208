#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "cli/midi/report.h"
#include "cli/midi/smf_file.h"
#include "zuna_midi/song_data.h"

namespace zuna_cli::midi {

/// A MIDI file that is well-formed but gives no song; the message tells why and what to do.
class ImportError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The song that `file` holds: a voice for every channel of every track that has messages, a timeline of its
/// tempos, meters and keys, and bar labels computed from the meters. `fallback_name` is the song's name when
/// the file names none. What the song cannot hold is added to `report`. Throws ImportError.
std::shared_ptr<zuna_midi::SongData> ImportSong(const smf::File& file, const std::string& song_number,
                                                const std::string& fallback_name, Report& report);

}  // namespace zuna_cli::midi
