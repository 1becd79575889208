#include <utility>

#include "format_converter/version0/show_data.h"
#include "zuna_midi/show_data.h"

namespace version0 {

zuna_midi::ShowData ShowData::get_version_1_0() const {
  zuna_midi::ShowData show;
  for (const auto& [number, song] : songs) show.AddSongData(song.get_version_1_0());
  return show;
}

ShowData::ShowData(const zuna_midi::ShowData& show) {
  for (const auto& [number, source] : show.songs()) {
    SongData song(*source);
    SongData& entry = songs[song.song_number];
    entry = std::move(song);
  }
}

}  // namespace version0
