#pragma once

// One song of a show in the current model.

#include <cstdint>
#include <memory>
#include <string>

#include "TL/timeline.h"
#include "kit/api.h"
#include "zuna_midi/voice_data.h"

namespace zuna_midi {

/// One song of a show.
struct ZUNA_API SongData {
  std::string song_number;                 ///< text, such as "12" or "12a"; the song's key in its show
  std::string song_name;                   ///< the title
  std::uint16_t division = 0;              ///< ticks of a quarter note
  std::uint32_t song_length = 0;           ///< ticks
  std::shared_ptr<TL::Timeline> timeline;  ///< tempos, bars, keys, pages and meters
  std::shared_ptr<VoiceData> voice_data;   ///< the MIDI messages

  /// A song with an empty timeline and no voices.
  SongData(const std::string& number, const std::string& name, unsigned short ticks_per_quarter,
           unsigned int length);

  /// Replaces the timeline.
  void SetTimeline(std::shared_ptr<TL::Timeline> replacement);
};

}  // namespace zuna_midi
