#include "zuna_midi/voice_data.h"

#include <stdexcept>

#include "kit/format.h"

namespace zuna_midi {

void VoiceData::AddTrack(std::shared_ptr<VoiceTrack> track) {
  if (!track) throw std::invalid_argument("VoiceData::AddTrack: no voice track was given");
  const std::uint16_t number = track->track_number;
  tracks_[number] = std::move(track);
}

VoiceTrack* VoiceData::GetTrack(unsigned short track_number) {
  const auto found = tracks_.find(track_number);
  if (found == tracks_.end()) {
    throw std::out_of_range(kit::format("There is no voice track with number %u", track_number));
  }
  return found->second.get();
}

}  // namespace zuna_midi
