// Compares two legacy songs in what they hold besides their current forms.
#pragma once

#include "format_converter/version0/containers/song_data.h"
#include "toolkit/comparison/internal/song_differences.h"

namespace zuna_toolkit {

/// Adds the differences between two legacy timelines, in everything that they hold.
void CompareLegacyTimelines(const version0::Timeline& before, const version0::Timeline& after,
                            const SongDifferences& differences);

/// Adds the differences between the tracks and events of two songs that those of their voices do not tell:
/// the order of the tracks; channels in a status and delta times, of tracks whose messages are the same.
void CompareLegacyTracks(const version0::SongData& before, const version0::SongData& after,
                         const SongDifferences& differences);

}  // namespace zuna_toolkit
