#include "cli/files/legacy_limits.h"

#include <algorithm>

#include "cli/base/errors.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kMaxSongs = 255;
constexpr std::size_t kMaxText = 255;  // bytes

void RequireShort(const std::string& text, const std::string& what, const std::string& name) {
  if (text.size() <= kMaxText) return;
  throw Failure(ExitCode::kBadInput, name,
                what + " has " + std::to_string(text.size()) + " bytes, and format 0.0 holds " +
                    std::to_string(kMaxText) + "; shorten it");
}

void RequireSongLimits(const zuna_midi::SongData& song, const std::string& name) {
  RequireShort(song.song_number, "the number of a song", name);
  const std::string where = "song " + song.song_number;
  RequireShort(song.song_name, "the name of " + where, name);
  const auto& voices = song.voice_data->tracks();
  for (const auto& [number, voice] : voices) {
    RequireShort(voice->name, "the name of voice " + std::to_string(number) + " of " + where, name);
  }
  const auto is_empty = [](const auto& voice) { return voice.second->messages.empty(); };
  if (std::all_of(voices.begin(), voices.end(), is_empty)) {
    throw Failure(ExitCode::kBadInput, name,
                  where + " has no messages, and format 0.0 cannot hold such a song; remove it");
  }
}

}  // namespace

void RequireLegacyLimits(const zuna_midi::ShowData& show, const std::string& name) {
  if (show.songs().size() > kMaxSongs) {
    throw Failure(ExitCode::kBadInput, name,
                  "has " + std::to_string(show.songs().size()) + " songs, and format 0.0 holds " +
                      std::to_string(kMaxSongs) + "; split the show");
  }
  for (const auto& [number, song] : show.songs()) RequireSongLimits(*song, name);
}

void RequireLegacyLimits(const CL::ChangeLog& log, const std::string& name) {
  RequireShort(log.show_name, "the name of the show", name);
  RequireShort(log.log_label, "the label of the log", name);
  for (const auto& [number, song] : log.song_logs()) {
    RequireShort(number, "the number of a song", name);
    RequireShort(song->song_name, "the name of song " + number, name);
    for (const CL::Marker& marker : song->markers->events) {
      RequireShort(marker.text, "a marker at " + std::to_string(marker.position) + " of song " + number,
                   name);
    }
  }
}

}  // namespace zuna_cli
