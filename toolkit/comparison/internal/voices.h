// Compares the voices of two songs.
#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "format_converter/version0/containers/song_data.h"
#include "toolkit/comparison/internal/song_differences.h"
#include "zuna_midi/voice_data.h"

namespace zuna_toolkit {

/// A voice, and what became of it. One of the two may be missing.
struct VoicePair {
  const zuna_midi::VoiceTrack* before = nullptr;
  const zuna_midi::VoiceTrack* after = nullptr;
  bool merged = false;            ///< `after` holds the messages of an earlier voice too
  std::size_t first_message = 0;  ///< the part of the messages of `after` that belongs to `before`
  std::size_t message_count = std::numeric_limits<std::size_t>::max();
};

/// The voices of two songs, paired by name in their order; then what is left of one number.
std::vector<VoicePair> PairByName(const zuna_midi::VoiceData& before, const zuna_midi::VoiceData& after);

/// The voices of a song, each paired with the one that it became in the legacy form and up again. The tracks
/// of the legacy form stand in the order of the voices. Those of one id came back as one voice, with their
/// messages one after the other.
std::vector<VoicePair> PairByTrack(const zuna_midi::VoiceData& before, const version0::SongData& legacy,
                                   const zuna_midi::VoiceData& after);

/// Adds the differences between the voices of each pair.
void CompareVoices(const std::vector<VoicePair>& pairs, const SongDifferences& differences);

}  // namespace zuna_toolkit
