#include "cli/shows/show_info.h"

#include "cli/base/errors.h"
#include "cli/base/table.h"
#include "cli/base/text.h"
#include "cli/base/version_text.h"

namespace zuna_cli {

namespace {

std::vector<std::string> RowOf(const SongInfo& song) {
  return {Printable(song.number),      Printable(song.name),        std::to_string(song.division),
          std::to_string(song.length), std::to_string(song.voices), std::to_string(song.events),
          std::to_string(song.bars),   std::to_string(song.tempos), std::to_string(song.meters)};
}

}  // namespace

std::vector<SongInfo> SongInfosOf(const zuna_midi::ShowData& show) {
  std::vector<SongInfo> infos;
  for (const auto& [number, song] : show.songs()) {
    const auto& voices = song->voice_data->tracks();
    std::size_t events = 0;
    for (const auto& [id, voice] : voices) events += voice->messages.size();
    const TL::Timeline& timeline = *song->timeline;
    infos.push_back({number, song->song_name, song->division, song->song_length, voices.size(), events,
                     timeline.bars_beats.size(), timeline.tempos.size(), timeline.meters.size()});
  }
  return infos;
}

std::vector<SongInfo> SongInfosOf(const version0::ShowData& show) {
  std::vector<SongInfo> infos;
  for (const auto& [number, song] : show.songs) {
    std::size_t events = 0;
    for (const auto& [id, list] : song.events) events += list.size();
    const version0::Timeline& timeline = song.timeline;
    infos.push_back({number, song.song_name, song.division, song.song_length, song.tracks.size(), events,
                     timeline.bars_beats.size(), timeline.tempos.size(), timeline.meters.size()});
  }
  return infos;
}

std::string CountsText(const std::vector<SongInfo>& songs) {
  std::size_t voices = 0;
  std::size_t events = 0;
  for (const SongInfo& song : songs) {
    voices += song.voices;
    events += song.events;
  }
  return Counted(songs.size(), "song", "songs") + ", " + Counted(voices, "voice", "voices") + ", " +
         Counted(events, "event", "events");
}

std::string InfoText(const ShowInfo& info) {
  std::string text = Printable(info.path) + ": show, version " + VersionText(info.version);
  if (info.show_name) text += ", \"" + Printable(*info.show_name) + '"';
  text += ", " + CountsText(info.songs) + '\n';
  if (info.songs.empty()) return text;
  Table table("<<>>>>>>>",
              {"number", "name", "division", "length", "voices", "events", "bars", "tempos", "meters"});
  for (const SongInfo& song : info.songs) table.Add(RowOf(song));
  return text + table.ToString();
}

std::string InfoJson(const ShowInfo& info) {
  std::string json = "{\"path\": " + JsonString(info.path) +
                     ", \"kind\": \"showdata\", \"fileVersion\": " + JsonString(VersionText(info.version)) +
                     ", \"showName\": " + (info.show_name ? JsonString(*info.show_name) : "null") +
                     ", \"songs\": [";
  const char* separator = "";
  for (const SongInfo& song : info.songs) {
    json += separator;
    json += "{\"songNumber\": " + JsonString(song.number) + ", \"songName\": " + JsonString(song.name) +
            ", \"division\": " + std::to_string(song.division) +
            ", \"songLength\": " + std::to_string(song.length) +
            ", \"voices\": " + std::to_string(song.voices) + ", \"events\": " + std::to_string(song.events) +
            ", \"bars\": " + std::to_string(song.bars) + ", \"tempos\": " + std::to_string(song.tempos) +
            ", \"meters\": " + std::to_string(song.meters) + "}";
    separator = ", ";
  }
  return json + "]}";
}

}  // namespace zuna_cli
