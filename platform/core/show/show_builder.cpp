#include "platform/core/show/show_builder.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "kit/format.h"
#include "platform/core/text/quote.h"

namespace zuna_core {

bool AddNewSong(zuna_midi::ShowData& show, std::shared_ptr<zuna_midi::SongData> song) {
  if (show.songs().count(song->song_number) != 0) return false;
  show.AddSongData(std::move(song));
  return true;
}

bool AddNewTrack(zuna_midi::VoiceData& voices, std::shared_ptr<zuna_midi::VoiceTrack> track) {
  if (voices.tracks().count(track->track_number) != 0) return false;
  voices.AddTrack(std::move(track));
  return true;
}

const char* SetBarNumber(TL::BarsBeats& entry, const std::string& label) {
  if (label.find('\0') != std::string::npos) return "a bar number cannot contain a NUL byte";
  if (label.size() > 7) return "a bar number has at most 7 bytes";
  entry.bar_number(label);
  return nullptr;
}

void CheckWritable(const zuna_midi::ShowData& show) {
  for (const auto& [number, song] : show.songs()) {
    const auto refuse = [name = "Song " + Quote(number)](const std::string& what) {
      throw std::logic_error(std::string(name).append(" cannot be written: ").append(what));
    };
    if (song->song_number != number) refuse("its number was changed to " + Quote(song->song_number));
    if (!song->timeline) refuse("it has no timeline");
    if (!song->voice_data) refuse("it has no voice data");
    for (const auto& [track_number, track] : song->voice_data->tracks()) {
      if (track->track_number != track_number) {
        refuse(kit::format("the number of its voice %u was changed to %u",
                           static_cast<unsigned>(track_number), static_cast<unsigned>(track->track_number)));
      }
    }
  }
}

}  // namespace zuna_core
