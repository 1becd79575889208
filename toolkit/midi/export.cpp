// Makes a MIDI file of a song (docs/midi.md).
#include <algorithm>
#include <bit>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <string>

#include "toolkit/document/internal/complete_songs.h"
#include "toolkit/midi/songs.h"

namespace zuna_toolkit::midi {

namespace {

constexpr std::uint32_t kMaxMicroseconds = 0xFFFFFF;
constexpr int kMaxSharps = 7;
constexpr std::uint16_t kMinor = 1;

std::string Bytes(std::initializer_list<unsigned> values) {
  std::string bytes;
  for (const unsigned value : values) bytes.push_back(static_cast<char>(value));
  return bytes;
}

void CountTooLate(Report& report) {
  report.not_kept.Add("event more than 268435455 ticks after the one before",
                      "events more than 268435455 ticks after the one before");
}

void AddMeters(const TL::Timeline& timeline, smf::Track& track, Report& report) {
  for (const TL::Meter& meter : timeline.meters) {
    if (meter.numerator == 0 || !std::has_single_bit(meter.denominator)) {
      report.not_kept.Add("meter with the numerator 0 or a denominator that is no power of two",
                          "meters with the numerator 0 or a denominator that is no power of two");
      continue;
    }
    const auto power = static_cast<unsigned>(std::countr_zero(meter.denominator));
    track.metas.push_back(
        {meter.time, smf::kMeter,
         Bytes({meter.numerator, power, meter.clocks_per_click, meter.notated_32_per_quarter})});
  }
}

void AddKeys(const TL::Timeline& timeline, smf::Track& track, Report& report) {
  for (const TL::Key& key : timeline.keys) {
    if (std::abs(key.key) > kMaxSharps || key.mode > kMinor) {
      report.not_kept.Add("key that MIDI does not know", "keys that MIDI does not know");
      continue;
    }
    track.metas.push_back({key.time, smf::kKey, Bytes({static_cast<std::uint8_t>(key.key), key.mode})});
  }
}

void AddTempos(const TL::Timeline& timeline, smf::Track& track, Report& report) {
  for (const TL::Tempo& tempo : timeline.tempos) {
    if (tempo.microseconds > kMaxMicroseconds) {
      report.not_kept.Add("tempo of more than 16777215 microseconds",
                          "tempos of more than 16777215 microseconds");
      continue;
    }
    track.metas.push_back({tempo.time, smf::kTempo,
                           Bytes({tempo.microseconds >> 16, tempo.microseconds >> 8, tempo.microseconds})});
  }
}

/// Removes the events that stand more than kMaxQuantity ticks after the one before them.
void RemoveTooLate(std::vector<smf::MetaEvent>& metas, Report& report) {
  std::uint32_t last = 0;
  std::erase_if(metas, [&](const smf::MetaEvent& meta) {
    const bool too_late = meta.time - last > smf::kMaxQuantity;
    if (too_late) {
      CountTooLate(report);
    } else {
      last = meta.time;
    }
    return too_late;
  });
}

/// The first track: the name of the song and its tempos, meters and keys in order of time. What MIDI cannot
/// hold is added to `report`; the end of the track is left to the caller.
smf::Track ExportTimeline(const TL::Timeline& timeline, const std::string& song_name, Report& report) {
  smf::Track track;
  if (!song_name.empty()) track.metas.push_back({0, smf::kTrackName, song_name});
  AddMeters(timeline, track, report);
  AddKeys(timeline, track, report);
  AddTempos(timeline, track, report);
  std::stable_sort(track.metas.begin(), track.metas.end(),
                   [](const auto& a, const auto& b) { return a.time < b.time; });
  RemoveTooLate(track.metas, report);
  report.not_kept.Add("bar label", "bar labels", timeline.bars_beats.size());
  report.not_kept.Add("page number", "page numbers", timeline.page_numbers.size());
  return track;
}

constexpr std::uint16_t kMaxDivision = 0x7FFF;
constexpr std::uint16_t kReservedDefault = 0xFFFF;
constexpr std::size_t kMaxVoices =
    std::numeric_limits<std::uint16_t>::max() - 1;  // one track is the timeline

using Messages = decltype(zuna_midi::VoiceTrack::messages);

Messages InOrder(const zuna_midi::VoiceTrack& voice, Report& report) {
  Messages messages = voice.messages;
  const auto earlier = [](const auto& a, const auto& b) { return a.first < b.first; };
  if (!std::is_sorted(messages.begin(), messages.end(), earlier)) {
    report.remarks.push_back("the messages of voice " + std::to_string(voice.track_number) +
                             " were out of order and are sorted by time");
    std::stable_sort(messages.begin(), messages.end(), earlier);
  }
  return messages;
}

/// Puts End of Track at the song's length, or at the last event of the track where that is later.
void SetEnd(smf::Track& track, std::uint32_t last, std::uint32_t song_length, Report& report) {
  track.end = std::max(last, song_length);
  if (track.end - last <= smf::kMaxQuantity) return;
  track.end = last + smf::kMaxQuantity;
  report.not_kept.Add("end of a track more than 268435455 ticks after its last event",
                      "ends of tracks more than 268435455 ticks after their last event");
}

smf::Track ExportVoice(const zuna_midi::VoiceTrack& voice, std::uint32_t song_length, Report& report) {
  smf::Track track;
  if (!voice.name.empty()) track.metas.push_back({0, smf::kTrackName, voice.name});
  std::uint32_t last = 0;
  for (const auto& [time, message] : InOrder(voice, report)) {
    if (!smf::IsChannelMessage(message)) {
      report.not_kept.Add("message that MIDI does not know", "messages that MIDI does not know");
    } else if (time - last > smf::kMaxQuantity) {
      CountTooLate(report);
    } else {
      if (smf::DataBytes(message.status) == 1 && message.data2 != 0) {
        report.not_kept.Add("second data byte of a message that has only one",
                            "second data bytes of messages that have only one");
      }
      track.messages.emplace_back(time, message);
      last = time;
    }
  }
  SetEnd(track, last, song_length, report);
  return track;
}

/// What a voice has and a track has not.
void CountVoiceFields(const zuna_midi::VoiceData& voices, Report& report) {
  std::uint16_t expected = 0;
  for (const auto& [number, voice] : voices.tracks()) {
    ++expected;
    if (number != expected) report.not_kept.Add("voice number", "voice numbers");
    if (voice->reserved != kReservedDefault) report.not_kept.Add("reserved field", "reserved fields");
  }
}

}  // namespace

smf::File ExportSong(const zuna_midi::SongData& song, Report& report) {
  if (!IsComplete(&song)) {
    throw Error(ErrorCode::kIncompleteSong, "", "it lacks its timeline or its voices", "give both");
  }
  if (song.division == 0 || song.division > kMaxDivision) {
    throw Error(
        ErrorCode::kBeyondMidiLimits, "",
        "a quarter note has " + std::to_string(song.division) + " ticks, and a MIDI file holds 1 to 32767",
        "change the song's division");
  }
  const auto& voices = song.voice_data->tracks();
  if (voices.size() > kMaxVoices) {
    throw Error(ErrorCode::kBeyondMidiLimits, "",
                "it has " + std::to_string(voices.size()) + " voices, and a MIDI file holds 65534",
                "remove some of them");
  }
  smf::File file;
  file.division = song.division;
  smf::Track first = ExportTimeline(*song.timeline, song.song_name, report);
  SetEnd(first, first.metas.empty() ? 0 : first.metas.back().time, song.song_length, report);
  file.tracks.push_back(std::move(first));
  for (const auto& [number, voice] : voices) {
    file.tracks.push_back(ExportVoice(*voice, song.song_length, report));
  }
  CountVoiceFields(*song.voice_data, report);
  return file;
}

}  // namespace zuna_toolkit::midi
