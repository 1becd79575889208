// A legacy show to the current model and back: its songs, their tracks and their events.
// docs/conversion.md lists the rules.

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "format_converter/version0/containers/show_data.h"
#include "format_converter/version0/conversions/repeated_tempos.h"
#include "format_converter/version0/conversions/track_ids.h"
#include "format_converter/version0/primitives/errors.h"
#include "zuna_midi/show_data.h"

namespace version0 {

namespace {

constexpr std::size_t kTrackLimit = 241;
/// The 16-bit field after a voice's name, for every voice that comes from a legacy track.
constexpr std::uint16_t kReserved = 0xFFFF;

std::shared_ptr<zuna_midi::VoiceTrack> make_voice(const TrackObject& track) {
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = track.track_id;
  voice->name = track.track_name;
  voice->reserved = kReserved;
  return voice;
}

/// The channel of every message is the low nibble of its track's id.
void append_messages(zuna_midi::VoiceTrack& voice, std::uint8_t track_id,
                     const std::vector<EventObject>& events) {
  const unsigned channel = track_id & 0x0FU;
  voice.messages.reserve(voice.messages.size() + events.size());
  for (const EventObject& event : events) {
    const auto status = static_cast<unsigned char>(channel | event.status_high);
    voice.messages.emplace_back(event.abs_time, std_midi::VoiceMessage(status, event.data1, event.data2));
  }
}

void require_complete(const zuna_midi::SongData& song) {
  if (!song.timeline || !song.voice_data) {
    throw std::logic_error("Song " + song.song_number +
                           " has no timeline or no voice data and cannot be converted");
  }
}

/// Refuses a song with more voices than are allowed, or more than there are ids for.
void require_enough_ids(const zuna_midi::VoiceData& voices, std::size_t id_count) {
  const auto others = std::count_if(voices.tracks().begin(), voices.tracks().end(),
                                    [](const auto& entry) { return !is_drum_name(entry.second->name); });
  // track_count() would give the number of voices modulo 65536.
  if (voices.tracks().size() > kTrackLimit || static_cast<std::size_t>(others) > id_count) {
    throw TrackCountError("track_count() greater than 241 cannot be converted.");
  }
}

void append_events(std::vector<EventObject>& events, std::uint8_t track_id,
                   const zuna_midi::VoiceTrack& voice) {
  events.reserve(events.size() + voice.messages.size());
  std::uint32_t previous = 0;
  for (const auto& [time, message] : voice.messages) {
    const auto status_high = static_cast<unsigned char>(message.status & 0xF0);
    events.emplace_back(time - previous, time, status_high, message.data1, message.data2, track_id);
    previous = time;
  }
}

}  // namespace

std::deque<unsigned char> get_non_drum_ids() {
  std::deque<unsigned char> ids;
  for (unsigned id = 1; id <= 255; ++id) {
    if ((id & 0x0F) != kDrumId) ids.push_back(static_cast<unsigned char>(id));
  }
  return ids;
}

std::shared_ptr<zuna_midi::SongData> SongData::get_version_1_0() const {
  auto song = std::make_shared<zuna_midi::SongData>(song_number, song_name, division, song_length);
  song->SetTimeline(timeline.get_version_1_0(division));
  for (const TrackObject& track : tracks) song->voice_data->AddTrack(make_voice(track));
  for (const auto& [track_id, track_events] : events) {
    if (!track_events.empty()) append_messages(*song->voice_data->GetTrack(track_id), track_id, track_events);
  }
  return song;
}

SongData::SongData(const zuna_midi::SongData& song)
    : song_number(song.song_number),
      song_name(song.song_name),
      division(song.division),
      song_length(song.song_length) {
  require_complete(song);
  timeline = Timeline(*song.timeline, song_number, song.song_length, song.division);
  std::deque<unsigned char> ids = get_non_drum_ids();
  require_enough_ids(*song.voice_data, ids.size());
  tracks.reserve(song.voice_data->tracks().size());
  for (const auto& [number, voice] : song.voice_data->tracks()) {
    std::uint8_t id = kDrumId;
    if (!is_drum_name(voice->name)) {
      id = ids.front();
      ids.pop_front();
    }
    tracks.emplace_back(id, voice->name);
    if (!voice->messages.empty()) append_events(events[id], id, *voice);
  }
}

zuna_midi::ShowData ShowData::get_version_1_0() const {
  zuna_midi::ShowData show;
  for (const auto& [number, song] : songs) show.AddSongData(song.get_version_1_0());
  return show;
}

ShowData::ShowData(const zuna_midi::ShowData& show) {
  RepeatedTempos repeated;
  for (const auto& [number, source] : show.songs()) {
    SongData song(*source);
    repeated.Add(*source->timeline, song.timeline);
    SongData& entry = songs[song.song_number];
    entry = std::move(song);
  }
}

}  // namespace version0
