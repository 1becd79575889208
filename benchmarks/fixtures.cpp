// The shows and logs that are measured.

#include "benchmarks/fixtures.h"

#include <string>

#include "format_converter/version0/conversions/track_ids.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_bench {

namespace {

constexpr std::size_t kSongs = 10;
constexpr std::size_t kTracks = 16;
constexpr std::size_t kKindsOfEdits = 8;
constexpr std::uint16_t kDivision = 480;
constexpr std::uint32_t kBar = 4 * kDivision;

/// Notes of a sixteenth, on and off, in one voice after the other.
std::vector<version0::EventObject> Notes(std::uint8_t track_id, std::size_t count) {
  std::vector<version0::EventObject> notes;
  notes.reserve(count);
  std::uint32_t time = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const bool on = i % 2 == 0;
    const auto key = static_cast<std::uint8_t>(36 + i * 7 % 60);
    notes.emplace_back(i == 0 ? 0 : 60, time, on ? 0x90 : 0x80, key, on ? 100 : 64, track_id);
    time += 60;
  }
  return notes;
}

version0::SongData Song(std::size_t number, std::size_t events) {
  version0::SongData song;
  song.song_number = song.timeline.name = std::to_string(number);
  song.song_name = "Song " + song.song_number;
  song.division = kDivision;
  auto ids = version0::get_non_drum_ids();
  for (std::size_t track = 0; track < kTracks; ++track) {
    song.tracks.emplace_back(ids[track], "Voice " + std::to_string(track + 1));
    song.events[ids[track]] = Notes(ids[track], events / kTracks);
  }
  song.song_length = song.timeline.song_length = static_cast<std::uint32_t>(events / kTracks * 60);
  song.timeline.tempos = {{0, static_cast<float>(0.5 / kDivision), 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}};
  for (std::uint32_t bar = 0; bar * kBar < song.song_length; ++bar) {
    song.timeline.bars_beats.emplace_back(bar * kBar, std::to_string(bar + 1), std::uint8_t{0});
  }
  return song;
}

/// Edits of a bar, in one bar after the other.
template <typename Edit, typename Value>
std::vector<Edit> Edits(std::size_t count, Value value) {
  std::vector<Edit> edits;
  edits.reserve(count);
  for (std::uint32_t bar = 0; bar < count; ++bar) edits.emplace_back(bar * kBar, (bar + 1) * kBar, value);
  return edits;
}

version0::SongLogV0 SongLog(std::size_t number, std::size_t edits_of_a_kind) {
  version0::SongLogV0 song;
  song.songNumber_ = std::to_string(number);
  song.songName_ = "Song " + song.songNumber_;
  song.songLength_ = static_cast<std::uint32_t>(edits_of_a_kind) * kBar;
  constexpr signed char kAny = 2;
  song.cuts = Edits<version0::CutV0>(edits_of_a_kind, kAny);
  song.vamps = Edits<version0::VampV0>(edits_of_a_kind, kAny);
  song.repeats = Edits<version0::RepeatV0>(edits_of_a_kind, kAny);
  song.clicks = Edits<version0::ClickV0>(edits_of_a_kind, kAny);
  song.tempo_scales = Edits<version0::TempoScaleV0>(edits_of_a_kind, 1.5F);
  song.transposes = Edits<version0::TransposeV0>(edits_of_a_kind, kAny);
  for (std::uint32_t bar = 0; bar < edits_of_a_kind; ++bar) {
    song.caesuras.emplace_back(bar * kBar);
    song.score_markers.emplace_back(bar * kBar, std::to_string(bar + 1));
  }
  return song;
}

}  // namespace

version0::ShowData LegacyShow(std::size_t events) {
  version0::ShowData show;
  for (std::size_t number = 1; number <= kSongs; ++number) {
    show.songs[std::to_string(number)] = Song(number, events / kSongs);
  }
  return show;
}

version0::ChangeLogV0 LegacyLog(std::size_t edits) {
  version0::ChangeLogV0 log;
  log.show_name = "Show";
  for (std::size_t number = 1; number <= kSongs; ++number) {
    log.songs[std::to_string(number)] = SongLog(number, edits / kSongs / kKindsOfEdits);
  }
  return log;
}

std::vector<std::uint8_t> Encrypted(const std::string& plaintext) {
  zuna_sec::TwoFishCipherStream stream(std::string(), kKey.key, kKey.iv);
  stream.GetStream().write(plaintext.data(), static_cast<std::streamsize>(plaintext.size()));
  return stream.GetEncryptedBytes();
}

}  // namespace zuna_bench
