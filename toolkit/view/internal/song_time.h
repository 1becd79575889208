// When a tick of a song is played.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "CL/song_log.h"
#include "zuna_midi/song_data.h"

namespace zuna_toolkit {

/// The seconds of a song's ticks, through its tempos. Before the first tempo, 120 quarter notes take a
/// minute, as in a MIDI file without a tempo.
class SongTime {
 public:
  explicit SongTime(const zuna_midi::SongData& song);

  /// Whether the song has a division; without one, a tick has no length.
  bool is_known() const { return division_ != 0; }

  /// From the beginning of the song, without any edit; 0 where the division is not known. Takes
  /// O(log tempos).
  double SecondsAt(std::uint32_t tick) const;

  /// The seconds of the whole song as it is played with the edits of `log`: cuts are left out, repeats are
  /// played as often as they say, a tempo scale divides the time. Vamps are played once; clicks, fermatas and
  /// caesuras take no time.
  double PlayedSeconds(const CL::SongLog& log) const;

 private:
  /// A tempo from a tick on.
  struct Stretch {
    std::uint32_t tick;
    double seconds;           ///< at `tick`
    double seconds_per_tick;  ///< from there on
  };

  std::uint16_t division_;
  std::uint32_t length_;  ///< ticks
  std::vector<Stretch> stretches_;
};

/// "1:23.4" or "1:02:03.4": minutes, seconds and tenths, with hours from one hour on.
std::string ClockText(double seconds);

}  // namespace zuna_toolkit
