// A show with its songs and voices.

#include "zuna_midi/show_data.h"

#include <stdexcept>
#include <utility>

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

SongData::SongData(const std::string& number, const std::string& name, unsigned short ticks_per_quarter,
                   unsigned int length)
    : song_number(number),
      song_name(name),
      division(ticks_per_quarter),
      song_length(length),
      timeline(std::make_shared<TL::Timeline>()),
      voice_data(std::make_shared<VoiceData>()) {}

void SongData::SetTimeline(std::shared_ptr<TL::Timeline> replacement) { timeline = std::move(replacement); }

ShowData::ShowData() = default;
ShowData::ShowData(const ShowData&) = default;
ShowData::ShowData(ShowData&&) noexcept = default;
ShowData& ShowData::operator=(const ShowData&) = default;
ShowData& ShowData::operator=(ShowData&&) noexcept = default;
ShowData::~ShowData() = default;

void ShowData::AddSongData(std::shared_ptr<SongData> song) {
  if (!song) throw std::invalid_argument("ShowData::AddSongData: no song was given");
  const std::string number = song->song_number;
  songs_[number] = std::move(song);
}

}  // namespace zuna_midi
