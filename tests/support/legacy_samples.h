// A legacy show and a legacy log with something in every list, and the log in the current model.

#pragma once

#include <cstdint>
#include <string>

#include "CL/change_log.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "tests/support/bytes.h"

namespace zuna_test {

/// A legacy log of the songs "12a" and "2" of the show "Opera", with something in every list of "12a".
inline version0::ChangeLogV0 SampleLegacyLog() {
  version0::SongLogV0 song;
  song.songNumber_ = "12a";
  song.songName_ = "Tune";
  song.songLength_ = 7680;
  song.vamps = {{0, 480, 2}};
  song.repeats = {{480, 960, 3}};
  song.cuts = {{960, 1440, -1}};
  song.clicks = {{0, 7680, 1}};
  song.tempo_scales = {{0, 7680, 1.5F}};
  song.transposes = {{0, 7680, -12}};
  song.caesuras = {version0::XCaesura(960)};
  song.score_markers = {{0, "A"}};
  version0::ChangeLogV0 log;
  log.identifier = kit::UUID(kit::UUID::Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  log.log_label.assign("First night");
  log.show_name.assign("Opera");
  log.log_tag_pair = {1, 2};
  log.songs.emplace("12a", song);
  log.songs["2"].songNumber_ = std::string("2");
  return log;
}

/// A legacy song of one event, at 120 quarter notes per minute.
inline version0::SongData SampleLegacySong(const std::string& number, std::uint16_t division) {
  version0::SongData song;
  song.song_number = number;
  song.song_name = "Tune";
  song.division = division;
  song.timeline.name = number;
  song.timeline.tempos = {{0, static_cast<float>(0.5 / division), 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}};
  song.tracks = {{1, "Piano"}};
  song.events = {{1, {{480, 480, 0x90, 60, 100, 1}}}};
  return song;
}

/// A legacy show of the songs "12a" (division 480) and "7" (division 96). Only the show has "7", only the log
/// has "2".
inline version0::ShowData SampleLegacyShow() {
  version0::ShowData show;
  show.songs["12a"] = SampleLegacySong("12a", 480);
  show.songs["7"] = SampleLegacySong("7", 96);
  return show;
}

/// A legacy show that begins like a gzip file, in its binary form: with 31 songs, of which the first one
/// states a length of 2187 bytes.
inline version0::ShowData LegacyShowLikeGzip() {
  constexpr std::size_t kLength = 2187;
  version0::ShowData show;
  for (int i = 0; i < 31; ++i) {
    const std::string number = std::to_string(100 + i);
    show.songs[number] = SampleLegacySong(number, 480);
  }
  version0::SongData& first = show.songs.at("100");
  const auto stated = [&first] {
    const std::string song = Written(first);
    return static_cast<std::uint8_t>(song[0]) + std::size_t{256} * static_cast<std::uint8_t>(song[1]);
  };
  while (stated() + 100 < kLength) first.events.at(1).push_back(first.events.at(1).back());
  first.song_name.append(kLength - stated(), 'x');
  return show;
}

/// SampleLegacyLog() as it comes up with SampleLegacyShow().
inline CL::ChangeLog SampleCurrentLog() {
  CL::ChangeLog log = SampleLegacyLog().get_version_1_0();
  log.GetSongLog("12a")->division = 480;
  return log;
}

}  // namespace zuna_test
