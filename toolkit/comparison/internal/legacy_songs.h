// Compares two legacy songs in what they hold besides their current forms.
#pragma once

#include "format_converter/version0/containers/song_data.h"
#include "toolkit/comparison/internal/song_differences.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

/// Adds the differences between two legacy timelines, in everything that they hold.
void CompareLegacyTimelines(const version0::Timeline& before, const version0::Timeline& after,
                            const SongDifferences& differences);

/// Adds the differences between the tracks and events of two songs that those of their voices do not tell:
/// the order of the tracks; channels in a status and delta times, of tracks whose messages are the same.
void CompareLegacyTracks(const version0::SongData& before, const version0::SongData& after,
                         const SongDifferences& differences);

/// Adds the difference that the tracks of these ids, or the voices of these numbers, stand in another order.
template <typename BeforeIds, typename AfterIds>
void AddVoiceOrder(const BeforeIds& before, const AfterIds& after, const SongDifferences& differences) {
  Difference difference;
  difference.subject = Subject::kVoice;
  difference.action = Action::kReordered;
  difference.place.list = "voices";
  for (const std::uint8_t id : before) AppendListed(difference.before, std::to_string(id));
  for (const std::uint8_t id : after) AppendListed(difference.after, std::to_string(id));
  differences.Add(std::move(difference));
}

}  // namespace zuna_toolkit
