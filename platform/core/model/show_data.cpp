#include "zuna_midi/show_data.h"

#include <stdexcept>
#include <utility>

namespace zuna_midi {

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
