// What format 0.0 cannot hold and what keeps a song from being converted (docs/conversion.md).
#include "toolkit/conversion/internal/legacy_limits.h"

#include <algorithm>
#include <utility>

#include "format_converter/version0/conversions/track_ids.h"
#include "toolkit/internal/first_tempo.h"
#include "toolkit/internal/legacy_sizes.h"
#include "toolkit/internal/translate.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kMaxVoices = 241;  // drums included

/// Checks a current document. Errors name the file, and the song where there is one.
class LimitCheck {
 public:
  explicit LimitCheck(const std::string& file) : file_(file) {}

  void Check(const zuna_midi::ShowData& show) {
    const std::size_t count = show.songs().size();
    if (count > kMostLegacySongs) {
      Fail(
          "has " + std::to_string(count) + " songs, and format 0.0 holds " + std::to_string(kMostLegacySongs),
          "split the show");
    }
    for (const auto& [number, song] : show.songs()) CheckSong(*song);
  }

  void Check(const CL::ChangeLog& log) {
    CheckText(log.show_name, "the name of the show");
    CheckText(log.log_label, "the label of the log");
    for (const auto& [number, song] : log.song_logs()) {
      song_ = number;
      CheckText(number, "the number of a song");
      CheckText(song->song_name, "the name of song " + NumberText(number));
      for (const CL::Marker& marker : song->markers->events) {
        if (marker.text.size() <= kLongestLegacyText) continue;
        CheckText(marker.text,
                  "a marker at " + std::to_string(marker.position) + " of song " + NumberText(number));
      }
    }
  }

 private:
  void CheckSong(const zuna_midi::SongData& song) {
    song_ = song.song_number;
    CheckText(song.song_number, "the number of a song");
    const std::string where = "song " + NumberText(song.song_number);
    CheckText(song.song_name, "the name of " + where);
    bool empty = true;
    for (const auto& [number, voice] : song.voice_data->tracks()) {
      CheckText(voice->name, "the name of voice " + std::to_string(number) + " of " + where);
      empty = empty && voice->messages.empty();
    }
    if (empty) Fail(where + " has no messages, and format 0.0 cannot hold such a song", "remove it");
  }

  void CheckText(const std::string& text, const std::string& what) const {
    if (text.size() <= kLongestLegacyText) return;
    Fail(what + " has " + std::to_string(text.size()) + " bytes, and format 0.0 holds " +
             std::to_string(kLongestLegacyText),
         "shorten it");
  }

  [[noreturn]] void Fail(const std::string& problem, const std::string& remedy) const {
    ErrorParts parts;
    parts.file = file_;
    parts.problem = problem;
    parts.remedy = remedy;
    parts.song = song_;
    throw Error(ErrorCode::kBeyondLegacyLimits, std::move(parts));
  }

  const std::string& file_;
  std::string song_;  ///< the number of the song being checked; empty outside songs
};

/// What keeps a timeline from being converted, in either direction.
template <typename Timeline>
std::optional<std::string> TimelineProblem(const Timeline& timeline) {
  if (timeline.meters.empty()) return "the timeline has no meter";
  if (LacksFirstTempo(timeline.tempos, timeline.meters)) return "the first meter has no tempo";
  const auto earlier = [](const auto& a, const auto& b) { return a.time < b.time; };
  if (!std::is_sorted(timeline.meters.begin(), timeline.meters.end(), earlier)) {
    return "the meters are in disorder";
  }
  return std::nullopt;
}

std::optional<std::string> VoicesProblem(const zuna_midi::VoiceData& voices) {
  const std::size_t ids = version0::get_non_drum_ids().size();
  const auto is_drums = [](const auto& entry) { return version0::is_drum_name(entry.second->name); };
  const std::size_t all = voices.tracks().size();
  const auto drums = std::count_if(voices.tracks().begin(), voices.tracks().end(), is_drums);
  const std::size_t others = all - static_cast<std::size_t>(drums);
  if (others > ids) {
    return "has " + std::to_string(others) + " voices besides drums, and format 0.0 holds " +
           std::to_string(ids);
  }
  if (all <= kMaxVoices) return std::nullopt;
  return "has " + std::to_string(all) + " voices, and format 0.0 holds " + std::to_string(kMaxVoices);
}

}  // namespace

Error SongError(const std::string& file, const std::string& number, const Obstacle& obstacle) {
  ErrorParts parts;
  parts.file = file;
  parts.problem = "song " + NumberText(number) + ": " + obstacle.problem;
  parts.remedy = obstacle.remedy;
  parts.song = number;
  return {obstacle.code, std::move(parts)};
}

void RequireLegacyLimits(const Document& current) {
  LimitCheck check(current.name());
  if (const auto* show = current.As<zuna_midi::ShowData>()) check.Check(*show);
  if (const auto* log = current.As<CL::ChangeLog>()) check.Check(*log);
}

std::optional<Obstacle> ObstacleDown(const zuna_midi::SongData& song) {
  if (const auto problem = TimelineProblem(*song.timeline)) return Obstacle{*problem, kCorrectSong};
  if (const auto problem = VoicesProblem(*song.voice_data))
    return Obstacle{*problem, "remove some of them", ErrorCode::kBeyondLegacyLimits};
  return std::nullopt;
}

std::optional<Obstacle> ObstacleUp(const version0::SongData& song) {
  if (const auto problem = TimelineProblem(song.timeline)) return Obstacle{*problem, kCorrectSong};
  for (const auto& [id, events] : song.events) {
    const auto has_id = [wanted = id](const auto& track) { return track.track_id == wanted; };
    if (events.empty() || std::any_of(song.tracks.begin(), song.tracks.end(), has_id)) continue;
    return Obstacle{"a message belongs to track " + std::to_string(id) + ", which the song does not have",
                    kCorrectSong};
  }
  return std::nullopt;
}

}  // namespace zuna_toolkit
