// Random legacy shows that survive the conversion up and down.

#include "tests/support/random_legacy_show.h"

#include <cmath>
#include <string>
#include <utility>

namespace zuna_test {

namespace {

using version0::SongData;

std::uint32_t Below(std::mt19937& random, std::uint32_t limit) {
  return std::uniform_int_distribution<std::uint32_t>(0, limit - 1)(random);
}

/// Any bytes but NUL, which ends a bar label.
std::string Text(std::mt19937& random, std::uint32_t longest) {
  std::string text;
  for (std::uint32_t left = Below(random, longest + 1); left > 0; --left) {
    text.push_back(static_cast<char>(1 + Below(random, 255)));
  }
  return text;
}

/// A metronome click that its clocks (of 24 to the quarter note) give back exactly.
struct Click {
  std::uint8_t per_click;
  std::uint8_t per_quarter;
  unsigned clocks;
};

Click RandomClick(std::mt19937& random) {
  constexpr std::uint8_t kQuarters[] = {1, 2, 3, 4, 6, 8, 12, 24};
  const std::uint8_t per_quarter = kQuarters[Below(random, 8)];
  const unsigned clocks_per_32nd = 24U / per_quarter;
  const auto per_click = static_cast<std::uint8_t>(1 + Below(random, 255 / clocks_per_32nd));
  return {per_click, per_quarter, per_click * clocks_per_32nd};
}

version0::RTempo RandomTempo(std::mt19937& random, std::uint32_t time, const Click& click,
                             std::uint16_t division) {
  // Up to 8 seconds for a quarter note: beyond, a single-precision tick no longer tells microseconds apart.
  const unsigned slowest = 180 / click.clocks + 1;
  const unsigned bpm = slowest + Below(random, 400);
  const double microseconds = std::floor(1.44e9 / (bpm * click.clocks) + 0.5);
  const auto seconds_per_tick = static_cast<float>(microseconds / 1e6 / division);
  return {time, seconds_per_tick, click.per_click, click.per_quarter, static_cast<std::uint16_t>(bpm)};
}

void AddMeters(std::mt19937& random, version0::Timeline& timeline, std::uint16_t division) {
  std::uint32_t time = Below(random, 2) * Below(random, 1000);
  Click click = RandomClick(random);
  for (std::uint32_t meter = 0, meters = 1 + Below(random, 5); meter < meters; ++meter) {
    timeline.meters.emplace_back(time, static_cast<std::uint8_t>(random()),
                                 static_cast<std::uint8_t>(random()));
    // A later meter either begins with a tempo or has none at all and keeps the click.
    if (meter == 0 || Below(random, 3) > 0) {
      click = RandomClick(random);
      for (std::uint32_t left = 1 + Below(random, 3); left > 0; --left) {
        timeline.tempos.push_back(RandomTempo(random, time, click, division));
        time += Below(random, 500);
      }
    }
    time = (timeline.tempos.empty() ? time : std::max(time, timeline.tempos.back().time)) + 1 +
           Below(random, 5000);
  }
}

void AddTimeline(std::mt19937& random, SongData& song) {
  song.timeline.name = song.song_number;
  song.timeline.song_length = song.song_length;
  AddMeters(random, song.timeline, song.division);
  for (std::uint32_t left = Below(random, 8); left > 0; --left) {
    song.timeline.bars_beats.emplace_back(Below(random, 9999), Text(random, 7),
                                          static_cast<std::uint8_t>(random()));
    song.timeline.keys.emplace_back(Below(random, 9999), static_cast<std::int8_t>(random()),
                                    static_cast<std::uint8_t>(random()));
    song.timeline.page_nums.emplace_back(Below(random, 9999), static_cast<std::uint16_t>(random()));
  }
}

/// Times mostly ascend, but nothing in the format makes them.
void AddEvents(std::mt19937& random, SongData& song, std::uint8_t id, std::uint32_t count) {
  std::uint32_t previous = 0;
  for (; count > 0; --count) {
    const std::uint32_t time = Below(random, 50) == 0 ? static_cast<std::uint32_t>(random())
                                                      : previous + Below(random, 2) * Below(random, 1000);
    song.events[id].emplace_back(time - previous, time, static_cast<std::uint8_t>(random() & 0xF0),
                                 static_cast<std::uint8_t>(random()), static_cast<std::uint8_t>(random()),
                                 id);
    previous = time;
  }
}

void AddTracks(std::mt19937& random, SongData& song) {
  const bool many = Below(random, 20) == 0;
  std::uint32_t left = Below(random, many ? 240 : 12);
  const bool drums = left == 0 || Below(random, 2) == 0;
  for (unsigned id = 1; id <= 255 && (left > 0 || id <= 9); ++id) {
    if ((id & 0x0F) == 9 ? id != 9 || !drums : left == 0) continue;
    if (id != 9) --left;
    const auto track_id = static_cast<std::uint8_t>(id);
    std::string name = id == 9 ? (Below(random, 2) == 0 ? "Drums" : "Drum Kit") : " ";
    if (id != 9) name.append(Text(random, 254));  // behind a blank, so that no other track is taken for drums
    song.tracks.emplace_back(track_id, name);
    AddEvents(random, song, track_id, Below(random, 100));
  }
  if (song.events.empty()) AddEvents(random, song, song.tracks.front().track_id, 1);
}

}  // namespace

version0::ShowData RandomLegacyShow(std::mt19937& random) {
  version0::ShowData show;
  for (std::uint32_t left = Below(random, 6); left > 0; --left) {
    SongData song;
    song.song_number = std::to_string(Below(random, 200)) + Text(random, 2);
    song.song_name = Text(random, 255);
    song.division = static_cast<std::uint16_t>(1 + Below(random, 2000));
    song.song_length = static_cast<std::uint32_t>(random());
    AddTimeline(random, song);
    AddTracks(random, song);
    show.songs[song.song_number] = std::move(song);
  }
  return show;
}

}  // namespace zuna_test
