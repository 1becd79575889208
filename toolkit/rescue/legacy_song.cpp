// What a song of a damaged legacy show needs before it is part of a new one.
#include "toolkit/rescue/internal/legacy_song.h"

#include <algorithm>
#include <sstream>

#include "toolkit/internal/legacy_sizes.h"
#include "toolkit/internal/translate.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

/// Adds a voice for events that have none.
void AddVoices(version0::SongData& song, std::vector<std::string>& remarks) {
  std::size_t voices = 0;
  std::size_t of_them = 0;  // events
  for (const auto& [id, events] : song.events) {
    const bool is_known =
        std::any_of(song.tracks.begin(), song.tracks.end(),
                    [wanted = id](const version0::TrackObject& track) { return track.track_id == wanted; });
    if (is_known || song.tracks.size() == kMostLegacyTracks) continue;
    song.tracks.emplace_back(id, "");
    ++voices;
    of_them += events.size();
  }
  if (voices == 0) return;
  remarks.push_back(Counted(of_them, "event is", "events are") + " of " + Counted(voices, "voice", "voices") +
                    " that it does not list, added without a name");
}

/// Lets a song that has lost its first tempo or meter begin with 120 quarter notes a minute in 4/4.
void AddTempoAndMeter(version0::SongData& song, std::vector<std::string>& remarks) {
  version0::Timeline& timeline = song.timeline;
  constexpr float kSecondsPerQuarter = 0.5F;
  const float division = song.division == 0 ? 1.0F : static_cast<float>(song.division);
  if (timeline.tempos.empty()) {
    timeline.tempos = {{0, kSecondsPerQuarter / division, 8, 8, 120}};
    remarks.emplace_back("it gets 120 quarter notes a minute in place of its tempos");
  }
  if (timeline.meters.empty()) {
    timeline.meters = {{0, 4, 4}};
    remarks.emplace_back("it gets 4/4 in place of its meters");
  }
}

}  // namespace

std::string WhyNotWritable(const version0::SongData& song) {
  try {
    std::ostringstream stream;
    song.write_binary(stream);
    return "";
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    return "it has no events, without which no legacy song can be written";
  }
}

void MakeConvertible(version0::SongData& song, std::vector<std::string>& remarks) {
  if (!remarks.empty()) AddTempoAndMeter(song, remarks);
  AddVoices(song, remarks);
}

}  // namespace zuna_toolkit
