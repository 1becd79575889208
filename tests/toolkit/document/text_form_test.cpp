// The text form of documents of every version.
#include "toolkit/document/text_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using zuna_test::MessageOf;
using zuna_test::Written;
using zuna_test::WrittenAt;

std::string Text(const Document& document) {
  std::ostringstream os;
  WriteTextForm(document, os);
  return os.str();
}

Document Again(const Document& document) { return ReadTextForm(Text(document), "name"); }

std::string Refusal(const std::string& text) {
  return MessageOf<Error>([&] { ReadTextForm(text, "name"); });
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

version0::ShowData SmallShow() {
  version0::SongData song;
  song.song_number = "2b";
  song.song_name = "G\xE9";
  song.division = 480;
  song.song_length = 960;
  song.tracks = {{17, "Piano"}, {9, ""}};
  song.events[9] = {{0, 0, 0x90, 36, 100, 9}};
  song.events[17] = {{0, 0, 0x90, 60, 100, 17}, {480, 480, 0x80, 60, 0, 17}};
  song.timeline.name = "Timeline";
  song.timeline.song_length = 960;
  song.timeline.tempos = {{0, 0.001F, 8, 8, 125}};
  song.timeline.bars_beats = {{0, "1", 3}};
  song.timeline.keys = {{0, -3, 1}};
  song.timeline.page_nums = {{0, 12}};
  song.timeline.meters = {{0, 4, 4}};
  version0::ShowData show;
  show.songs["2b"] = song;
  return show;
}

constexpr const char* kSmallShow = R"({
  "kind": "showdata",
  "fileVersion": "0.0",
  "songs": [
    {
      "songNumber": "2b",
      "songName": {"bytes": "47e9"},
      "division": 480,
      "songLength": 960,
      "tracks": [
        {"trackId": 17, "name": "Piano"},
        {"trackId": 9, "name": ""}
      ],
      "events": [
[0,0,144,36,100,9],
[0,0,144,60,100,17],
[480,480,128,60,0,17]
      ],
      "timeline": {
        "name": "Timeline",
        "songLength": 960,
        "tempos": [
          {"time": 0, "secondsPerTick": 0.001, "notated32PerClick": 8, "notated32PerQuarter": 8, "bpm": 125}
        ],
        "barsBeats": [
          {"time": 0, "label": "1", "tag": 3}
        ],
        "keys": [
          {"time": 0, "key": -3, "mode": 1}
        ],
        "pageNumbers": [
          {"time": 0, "page": 12}
        ],
        "meters": [
          {"time": 0, "numerator": 4, "denominator": 4}
        ]
      }
    }
  ]
}
)";

version0::ChangeLogV0 SmallLog() {
  version0::ChangeLogV0 log;
  log.show_name = "Opera";
  log.log_label = "A";
  log.identifier = kit::UUID(kit::UUID::Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  log.log_tag_pair = {1, 65535};
  version0::SongLogV0& song = log.songs["2b"];
  song.songNumber_ = "2b";
  song.songName_ = "Go";
  song.songLength_ = 7680;
  song.cuts = {{0, 480, 1}};
  song.vamps = {{1, 481, -1}};
  song.repeats = {{2, 482, 3}};
  song.clicks = {{3, 483, 1}};
  song.tempo_scales = {{4, 484, 1.5F}};
  song.transposes = {{5, 485, -2}};
  song.caesuras = {version0::XCaesura(6)};
  song.score_markers = {{7, "A"}};
  return log;
}

constexpr const char* kSmallLog = R"({
  "kind": "logdata",
  "fileVersion": "0.0",
  "showName": "Opera",
  "logLabel": "A",
  "identifier": "00010203-0405-0607-0809-0a0b0c0d0e0f",
  "tagPair": [1, 65535],
  "songLogs": [
    {
      "songNumber": "2b",
      "songName": "Go",
      "songLength": 7680,
      "cuts": [
        {"start": 0, "end": 480, "value": 1}
      ],
      "vamps": [
        {"start": 1, "end": 481, "value": -1}
      ],
      "repeats": [
        {"start": 2, "end": 482, "value": 3}
      ],
      "clicks": [
        {"start": 3, "end": 483, "value": 1}
      ],
      "tempoScales": [
        {"start": 4, "end": 484, "value": 1.5}
      ],
      "transposes": [
        {"start": 5, "end": 485, "value": -2}
      ],
      "caesuras": [
        {"time": 6}
      ],
      "markers": [
        {"time": 7, "text": "A"}
      ]
    }
  ]
}
)";

TEST(TextForm, OfALegacyShowHasItsRecords) {
  EXPECT_EQ(Text({LegacyShow{SmallShow()}, {}, "name"}), kSmallShow);
  const Document read = ReadTextForm(kSmallShow, "name");
  EXPECT_EQ(read.type(), (FileType{cmn::FileKind::kShow, {}}));
  EXPECT_EQ(read.name(), "name");
  EXPECT_EQ(Written(read.As<LegacyShow>()->show), Written(SmallShow()));
}

TEST(TextForm, OfALegacyLogHasItsRecords) {
  EXPECT_EQ(Text({LegacyLog{SmallLog()}, {}, "name"}), kSmallLog);
  const Document read = ReadTextForm(kSmallLog, "name");
  EXPECT_EQ(read.type(), (FileType{cmn::FileKind::kLog, {}}));
  EXPECT_EQ(Written(read.As<LegacyLog>()->log), Written(SmallLog()));
}

TEST(TextForm, BringsDocumentsOfAllVersionsBackByteByByte) {
  std::mt19937 random(1);
  for (int i = 0; i < 100; ++i) {
    const version0::ShowData legacy_show = zuna_test::RandomLegacyShow(random);
    EXPECT_EQ(Written(Again({LegacyShow{legacy_show}, {}, "name"}).As<LegacyShow>()->show),
              Written(legacy_show));
    const version0::ChangeLogV0 legacy_log = zuna_test::RandomLegacyLog(random);
    EXPECT_EQ(Written(Again({LegacyLog{legacy_log}, {}, "name"}).As<LegacyLog>()->log), Written(legacy_log));
    const zuna_midi::ShowData show = zuna_test::RandomShow(random);
    for (const cmn::FileVersion version : cmn::SupportedVersions(cmn::FileKind::kShow)) {
      const Document read = Again({show, version, "name"});
      EXPECT_EQ(read.type().version, version);
      EXPECT_EQ(WrittenAt(*read.As<zuna_midi::ShowData>(), version), WrittenAt(show, version));
    }
    const CL::ChangeLog log = zuna_test::RandomLog(random);
    for (const cmn::FileVersion version : cmn::SupportedVersions(cmn::FileKind::kLog)) {
      const Document read = Again({log, version, "name"});
      EXPECT_EQ(read.type().version, version);
      EXPECT_EQ(WrittenAt(*read.As<CL::ChangeLog>(), version), WrittenAt(log, version));
    }
  }
}

TEST(TextForm, IsTheSameTheSecondTime) {
  std::mt19937 random(2);
  for (int i = 0; i < 50; ++i) {
    const Document show({LegacyShow{zuna_test::RandomLegacyShow(random)}, {}, "name"});
    EXPECT_EQ(Text(Again(show)), Text(show));
    const Document log({LegacyLog{zuna_test::RandomLegacyLog(random)}, {}, "name"});
    EXPECT_EQ(Text(Again(log)), Text(log));
  }
}

TEST(TextForm, TakesKeysInAnyOrder) {
  const Document read = ReadTextForm(R"({"songs": [], "kind": "showdata", "fileVersion": "0.0"})", "name");
  EXPECT_TRUE(read.As<LegacyShow>()->show.songs.empty());
}

TEST(TextForm, NamesPathLineAndColumn) {
  EXPECT_EQ(Refusal(Replaced(kSmallShow, "\"bpm\": 125", "\"bmp\": 125")),
            "name: songs[0].timeline.tempos[0]: unknown key \"bmp\"; did you mean \"bpm\"? "
            "(line 23, column 102); correct the text");
  EXPECT_EQ(Refusal(Replaced(kSmallLog, "\"value\": -1", "\"value\": 128")),
            "name: songLogs[0].vamps[0].value: expected an integer from -128 to 127 "
            "(line 17, column 46); correct the text");
  EXPECT_EQ(Refusal("{\n  \"kind\": \"showdata\",\n  oops}"),
            "name: kind: this is not JSON (syntax error) (line 3, column 3); correct the text");
}

TEST(TextForm, MayHaveAByteOrderMarkBeforeIt) {
  const std::string text = R"({"kind": "showdata", "fileVersion": "1.2", "showName": "A", "songs": [)";
  EXPECT_EQ(ReadTextForm("\xEF\xBB\xBF" + text + "]}", "name").type().version, (cmn::FileVersion{1, 2}));
  EXPECT_EQ(Refusal("\xEF\xBB\xBF" + text), Refusal(text));
}

TEST(TextForm, OfALegacyShowRefusesWhatItsFileCannotHold) {
  const auto refused = [](const std::string& from, const std::string& to) {
    return Refusal(Replaced(kSmallShow, from, to));
  };
  using testing::HasSubstr;
  EXPECT_THAT(refused("\"Piano\"", '"' + std::string(256, 'p') + '"'),
              HasSubstr("songs[0].tracks[0].name: a text of a legacy file has at most 255 bytes (line "));
  EXPECT_EQ(refused("\"Piano\"", '"' + std::string(255, 'p') + '"'), "(nothing was thrown)");
  EXPECT_THAT(refused("\"trackId\": 9", "\"trackId\": 10"),
              HasSubstr("songs[0]: the track of an event is not among the tracks of the song (line "));
  EXPECT_THAT(refused("144,36,100,9]", "144,36,256,9]"),
              HasSubstr("songs[0].events[0][4]: expected an integer from 0 to 255 (line 15, column "));
  EXPECT_THAT(
      Refusal(R"({"kind": "showdata", "fileVersion": "0.0", "songs": [{"songNumber": "1", "songName": "",
                          "division": 1, "songLength": 1, "tracks": [], "events": [],
                          "timeline": {"name": "", "songLength": 1, "tempos": [], "barsBeats": [], "keys": [],
                                       "pageNumbers": [], "meters": []}}]})"),
      HasSubstr("songs[0]: a legacy song has at least one event (line "));
}

TEST(TextForm, OfALegacyFileHasEachSongOnce) {
  std::string text = kSmallShow;
  const std::size_t begin = text.find("    {\n      \"songNumber\"");
  const std::size_t end = text.find("\n  ]\n}");
  const std::string song = text.substr(begin, end - begin);
  text.insert(end, ",\n" + song);
  EXPECT_THAT(Refusal(text),
              testing::HasSubstr("songs[1]: the show has another song of the same number (line "));
  text = kSmallLog;
  const std::size_t log_begin = text.find("    {\n      \"songNumber\"");
  const std::size_t log_end = text.find("\n  ]\n}");
  text.insert(log_end, ",\n" + text.substr(log_begin, log_end - log_begin));
  EXPECT_THAT(Refusal(text),
              testing::HasSubstr("songLogs[1]: the log has another song of the same number (line "));
}

TEST(TextForm, OfALegacyShowHasAtMost255SongsAndTracks) {
  version0::ShowData show;
  for (int i = 0; i < 256; ++i) {
    version0::SongData song = SmallShow().songs.at("2b");
    song.song_number = std::to_string(i);
    show.songs[song.song_number] = song;
  }
  EXPECT_THAT(Refusal(Text({LegacyShow{show}, {}, "name"})),
              testing::HasSubstr("songs[255]: a legacy show has at most 255 songs (line "));
  show = SmallShow();
  auto& tracks = show.songs.at("2b").tracks;
  tracks.resize(256, tracks.front());
  EXPECT_THAT(Refusal(Text({LegacyShow{show}, {}, "name"})),
              testing::HasSubstr("songs[0]: a legacy song has at most 255 tracks (line "));
}

TEST(TextForm, RefusesOtherKindsAndVersions) {
  EXPECT_THAT(Refusal(R"({"fileVersion": "0.0", "kind": "midi", "songs": []})"),
              testing::HasSubstr("name: kind: this is neither a show nor a log (line 1, column "));
  EXPECT_THAT(
      Refusal(R"({"fileVersion": "3.0", "kind": "showdata", "songs": []})"),
      testing::MatchesRegex("name: fileVersion: Show file version 3\\.0 is not supported in the text form "
                            "\\(line 1, column [0-9]+\\); correct it, or use a newer release: the supported "
                            "versions are 1\\.0, .*"));
  EXPECT_THAT(Refusal(R"({"kind": "showdata", "fileVersion": "two"})"),
              testing::HasSubstr("fileVersion: expected a version such as \"2.0\" (line 1, column "));
  EXPECT_THAT(Refusal("TLMN"), testing::HasSubstr("name: this is not JSON"));
  EXPECT_THAT(Refusal(""), testing::HasSubstr("name: the text ends before its JSON value does"));
}

}  // namespace
}  // namespace zuna_toolkit
