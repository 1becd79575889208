// What a song of a damaged legacy show needs before it is part of a new one.
#pragma once

#include <string>
#include <vector>

#include "format_converter/version0/containers/song_data.h"

namespace zuna_toolkit {

/// Why `song` cannot be written; empty where it can.
std::string WhyNotWritable(const version0::SongData& song);

/// Gives the song what a conversion up does not do without, and adds to `remarks` what that was: a name for
/// every voice, and where remarks tell of damage, a tempo and a meter.
void MakeConvertible(version0::SongData& song, std::vector<std::string>& remarks);

}  // namespace zuna_toolkit
