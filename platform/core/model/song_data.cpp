#include "zuna_midi/song_data.h"

#include <utility>

namespace zuna_midi {

SongData::SongData(const std::string& number, const std::string& name, unsigned short ticks_per_quarter,
                   unsigned int length)
    : song_number(number),
      song_name(name),
      division(ticks_per_quarter),
      song_length(length),
      timeline(std::make_shared<TL::Timeline>()),
      voice_data(std::make_shared<VoiceData>()) {}

void SongData::SetTimeline(std::shared_ptr<TL::Timeline> replacement) { timeline = std::move(replacement); }

}  // namespace zuna_midi
