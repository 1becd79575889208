#pragma once

#include <cstdint>
#include <memory>

#include "zuna_midi/show_data.h"

namespace zuna_core {

/// Adds a song, respectively a track, unless one of the same number is there already; false then.
bool AddNewSong(zuna_midi::ShowData& show, std::shared_ptr<zuna_midi::SongData> song);
bool AddNewTrack(zuna_midi::VoiceData& voices, std::shared_ptr<zuna_midi::VoiceTrack> track);

/// What a reader reports where one of these gives false.
inline constexpr const char* kDuplicateSong = "the show has another song of the same number";
inline constexpr const char* kDuplicateTrack = "the song has another voice of the same number";

/// The label of a bar or beat has to fit into its entry as it is. Null, or what is wrong with it.
const char* SetBarNumber(TL::BarsBeats& entry, const std::string& label);

/// Throws std::logic_error, naming the song, for a show that no file can state: a song without timeline or
/// voices, or one that is kept under another number than its own.
void CheckWritable(const zuna_midi::ShowData& show);

}  // namespace zuna_core
