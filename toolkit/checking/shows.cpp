// Checks shows: current and legacy ones.
#include <map>
#include <memory>

#include "toolkit/checking/internal/check_models.h"
#include "toolkit/checking/internal/timeline_check.h"
#include "toolkit/checking/internal/voice_check.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

void CheckDivision(std::uint16_t division, const SongFindings& findings) {
  if (division == 0) findings.Add(FindingCode::kDivisionZero, "the division is 0");
}

/// A song is known by its voices and by what they play.
void CheckContent(std::size_t voices, bool has_messages, const SongFindings& findings) {
  if (voices == 0) {
    findings.Add(FindingCode::kSongWithoutVoices, "there are no voices");
  } else if (!has_messages) {
    findings.Add(FindingCode::kSongWithoutMessages, "no voice has a message");
  }
}

void CheckVoiceName(std::uint16_t number, const std::string& name, const SongFindings& findings) {
  findings.CheckText(name, "the name of voice " + std::to_string(number),
                     {.list = "voices", .voice = number});
}

void CheckVoices(const zuna_midi::SongData& song, SoundingNotes& notes, const SongFindings& findings) {
  bool has_messages = false;
  for (const auto& [number, voice] : song.voice_data->tracks()) {
    CheckVoiceName(number, voice->name, findings);
    VoiceCheck check(number, song.song_length, notes, findings);
    for (const auto& [time, message] : voice->messages) check.Add(time, message);
    check.End();
    has_messages = has_messages || !voice->messages.empty();
  }
  CheckContent(song.voice_data->tracks().size(), has_messages, findings);
}

/// The ids of the tracks, with how many tracks have each.
std::map<std::uint8_t, std::size_t> CheckTracks(const version0::SongData& song,
                                                const SongFindings& findings) {
  std::map<std::uint8_t, std::size_t> ids;
  for (const version0::TrackObject& track : song.tracks) {
    CheckVoiceName(track.track_id, track.track_name, findings);
    ++ids[track.track_id];
  }
  for (const auto& [id, count] : ids) {
    if (count < 2) continue;
    findings.Add(FindingCode::kTrackShared,
                 std::to_string(count) + " tracks have the id " + std::to_string(id),
                 {.list = "voices", .voice = id});
  }
  return ids;
}

void CheckEvents(const version0::SongData& song, SoundingNotes& notes, const SongFindings& findings) {
  const std::map<std::uint8_t, std::size_t> ids = CheckTracks(song, findings);
  bool has_events = false;
  for (const auto& [id, events] : song.events) {
    if (events.empty()) continue;
    has_events = true;
    if (!ids.contains(id)) {
      findings.Add(FindingCode::kTrackMissing,
                   Counted(events.size(), "event belongs", "events belong") + " to track " +
                       std::to_string(id) + ", which is not there",
                   {.list = "voices", .voice = id});
    }
    VoiceCheck check(id, song.song_length, notes, findings);
    const std::uint8_t channel = id & 0x0FU;
    for (const version0::EventObject& event : events) {
      const auto status = static_cast<std::uint8_t>(event.status_high | channel);
      check.Add(event.abs_time, {status, event.data1, event.data2});
    }
    check.End();
  }
  CheckContent(ids.size(), has_events, findings);
}

void CheckSong(const version0::SongData& song, SoundingNotes& notes, const SongFindings& findings) {
  CheckSongFields(song.song_number, song.song_name, song.song_length, findings);
  CheckDivision(song.division, findings);
  CheckEvents(song, notes, findings);
  TimelineCheck({song.division, song.song_length}, findings).Check(song.timeline);
}

void CheckSong(const zuna_midi::SongData& song, SoundingNotes& notes, const SongFindings& findings) {
  CheckSongFields(song.song_number, song.song_name, song.song_length, findings);
  CheckDivision(song.division, findings);
  if (song.voice_data) CheckVoices(song, notes, findings);
  if (song.timeline) TimelineCheck({song.division, song.song_length}, findings).Check(*song.timeline);
  if (song.voice_data && song.timeline) return;
  findings.Add(FindingCode::kSongIncomplete,
               song.timeline ? "the voices are missing" : "the timeline is missing");
}

void CheckEmptyShow(bool empty, const FindingSink& sink) {
  if (empty) SongFindings("", sink).Add(FindingCode::kShowEmpty, "there are no songs");
}

}  // namespace

void CheckShow(const version0::ShowData& show, const FindingSink& sink) {
  CheckEmptyShow(show.songs.empty(), sink);
  const auto notes = std::make_unique<SoundingNotes>();
  for (const auto& [number, song] : show.songs) {
    SongFindings findings(number, sink);
    findings.SetBars(BarLabels(song.timeline));
    CheckSong(song, *notes, findings);
  }
}

void CheckShow(const zuna_midi::ShowData& show, const FindingSink& sink) {
  SongFindings("", sink).CheckText(show.show_name, "the show name");
  CheckEmptyShow(show.songs().empty(), sink);
  const auto notes = std::make_unique<SoundingNotes>();
  for (const auto& [number, song] : show.songs()) {
    SongFindings findings(number, sink);
    if (song->timeline) findings.SetBars(BarLabels(*song->timeline));
    CheckSong(*song, *notes, findings);
  }
}

}  // namespace zuna_toolkit
