#include "cli/shows/up_report.h"

#include <algorithm>
#include <map>

#include "cli/base/errors.h"

namespace zuna_cli {

namespace {

using Texts = std::vector<std::string>;

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

void AddCutLabels(const version0::SongData& before, const zuna_midi::SongData& after, Texts& losses) {
  const auto& labels = before.timeline.bars_beats;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const std::string kept = after.timeline->bars_beats.at(i).bar_number();
    if (kept == labels[i].label) continue;
    losses.push_back("song " + before.song_number + ": the label at " + std::to_string(labels[i].time) +
                     " is cut: " + Quoted(labels[i].label) + " becomes " + Quoted(kept));
  }
}

void AddMergedTracks(const version0::SongData& song, Texts& losses) {
  std::map<std::uint8_t, Texts> names;
  for (const auto& track : song.tracks) names[track.track_id].push_back(Quoted(track.track_name));
  for (const auto& [id, shared] : names) {
    if (shared.size() < 2) continue;
    std::string list;
    for (const std::string& name : shared) list += (list.empty() ? "" : ", ") + name;
    losses.push_back("song " + song.song_number + ": " + std::to_string(shared.size()) + " tracks share id " +
                     std::to_string(id) + " and become one voice named " + shared.back() + ": " + list);
  }
}

void AddDroppedTempos(const version0::SongData& before, const zuna_midi::SongData& after, Texts& losses) {
  const std::size_t count = before.timeline.tempos.size();
  const std::size_t kept = after.timeline->tempos.size();
  if (kept >= count) return;
  losses.push_back(
      "song " + before.song_number + ": " +
      Counted(count - kept, "tempo before the first meter is", "tempos before the first meter are") +
      " dropped");
}

}  // namespace

std::vector<std::string> UpLosses(const LegacyShow& legacy, const zuna_midi::ShowData& current) {
  Texts losses;
  for (const auto& [number, song] : legacy.show.songs) {
    const zuna_midi::SongData& after = *current.songs().at(number);
    AddCutLabels(song, after, losses);
    AddMergedTracks(song, losses);
    AddDroppedTempos(song, after, losses);
  }
  if (legacy.replaced_songs > 0) {
    losses.push_back(Counted(legacy.replaced_songs, "song gave", "songs gave") +
                     " way to a later song of the same number");
  }
  if (legacy.trailing_bytes > 0) {
    losses.push_back(
        Counted(legacy.trailing_bytes, "byte after the last song is", "bytes after the last song are") +
        " not kept");
  }
  return losses;
}

}  // namespace zuna_cli
