// Legacy shows and logs with many records of few bytes.

#include <utility>

#include "tests/costs/worst_inputs.h"

namespace zuna_test {

namespace {

using Show = version0::ShowData;
using Song = version0::SongData;
using Log = version0::ChangeLogV0;

constexpr unsigned kMost = 255;  // songs of a show, tracks of a song, bytes of a text

Song& AddSong(Show& show, const std::string& number) {
  Song& song = show.songs[number];
  song.song_number = number;
  song.division = 1;
  song.timeline.tempos = {{0, 0.5F, 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}};
  song.tracks.emplace_back(std::uint8_t{1}, "");
  song.events[1].emplace_back(0, 0, 0x90, 0, 0, 1);
  return song;
}

template <typename Fill>
Named<Show> Songs(std::string name, unsigned songs, Fill fill) {
  Named<Show> named{std::move(name), {}};
  for (unsigned i = 0; i < songs; ++i) fill(AddSong(named.model, ShortNumber(i)));
  return named;
}

void AddTracks(Song& song) {
  for (unsigned i = 1; i < kMost; ++i) song.tracks.emplace_back(static_cast<std::uint8_t>(i), "");
}

/// All tracks become one voice.
void AddSharedTracks(Song& song) {
  for (unsigned i = 1; i < kMost; ++i) song.tracks.emplace_back(std::uint8_t{1}, "\x01");
}

/// No event stands where its delta time says, and each has another one and another channel than the last.
void AddEvents(Song& song) {
  for (unsigned i = 0; i < 20'000; ++i) {
    const auto status = static_cast<unsigned char>(0x92 + i % 2);
    song.events[1].emplace_back(1 + i % 2, 0, status, 0, 0, 1);
  }
}

void AddTempos(Song& song) {
  for (unsigned i = 0; i < 15'000; ++i) {
    song.timeline.tempos.emplace_back(0, 1.0F, static_cast<std::uint8_t>(i % 7),
                                      static_cast<std::uint8_t>(i % 5), 1);
  }
}

/// Each meter has all tempos, as many as are always taken, and each tempo has another click.
void AddRepeatedTempos(Song& song) {
  song.timeline.tempos.clear();
  for (unsigned i = 0; i < 64; ++i) {
    song.timeline.tempos.emplace_back(0, 0.5F, std::uint8_t{8}, static_cast<std::uint8_t>(8 + i % 2), 120);
  }
  song.timeline.meters.assign(64, {0, 4, 4});
}

void AddPages(Song& song) { song.timeline.page_nums.assign(25'000, {0, 0}); }

/// A label that is cut, in a song whose number grows when it is shown.
Show CutLabels() {
  Show show;
  Song& song = AddSong(show, std::string(kMost, '\x01'));
  for (unsigned i = 0; i < 10'000; ++i)
    song.timeline.bars_beats.emplace_back(0, std::string(8, '\x02'), std::uint8_t{0});
  return show;
}

template <typename Fill>
Named<Log> SongLogs(std::string name, unsigned songs, Fill fill) {
  Named<Log> named{std::move(name), {}};
  for (unsigned i = 0; i < songs; ++i) {
    const std::string number = ShortNumber(i);
    version0::SongLogV0& song = named.model.songs[number];
    song.songNumber_ = number;
    fill(song);
  }
  return named;
}

}  // namespace

std::vector<Named<Show>> WorstLegacyShows() {
  std::vector<Named<Show>> shows;
  shows.push_back(Songs("legacy-songs", kMost, [](Song&) {}));
  shows.push_back(Songs("legacy-tracks", kMost, AddTracks));
  shows.push_back(Songs("legacy-shared-tracks", kMost, AddSharedTracks));
  shows.push_back(Songs("legacy-events", 1, AddEvents));
  shows.push_back(Songs("legacy-tempos", 1, AddTempos));
  shows.push_back(Songs("legacy-repeated-tempos", kMost, AddRepeatedTempos));
  shows.push_back(Songs("legacy-pages", 1, AddPages));
  shows.push_back({"legacy-cut-labels", CutLabels()});
  return shows;
}

std::vector<Named<Log>> WorstLegacyLogs() {
  std::vector<Named<Log>> logs;
  logs.push_back(SongLogs("legacy-song-logs", 10'000, [](auto&) {}));
  logs.push_back(SongLogs("legacy-vamps", 1, [](auto& song) { song.vamps.assign(20'000, {0, 0, 0}); }));
  logs.push_back(SongLogs("legacy-caesuras", 1,
                          [](auto& song) { song.caesuras.assign(30'000, version0::XCaesura(0)); }));
  logs.push_back(SongLogs("legacy-markers", 1, [](auto& song) {
    song.score_markers.assign(40'000, {0, ""});
  }));
  return logs;
}

}  // namespace zuna_test
