// Compares the voices of two songs.
#pragma once

#include <cstddef>
#include <limits>
#include <vector>

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

/// Adds the differences between the voices of each pair.
void CompareVoices(const std::vector<VoicePair>& pairs, const SongDifferences& differences);

}  // namespace zuna_toolkit
