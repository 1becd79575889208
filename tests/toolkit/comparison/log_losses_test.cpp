// What a log loses on its way down to format 0.0.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/comparison/describe.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::shared_ptr<CL::SongLog> AddSong(CL::ChangeLog& log, const std::string& number) {
  auto song = std::make_shared<CL::SongLog>(number, "Name", std::uint16_t{0}, 1920U);
  log.AddSongLog(song);
  return song;
}

std::vector<std::string> Losses(const CL::ChangeLog& log) {
  return zuna_test::DownLosses({log, {1, 2}, "log"});
}

TEST(LogLosses, AreNoneForWhatTheLegacyFormatHolds) {
  CL::ChangeLog log;
  log.show_name = "Show";
  log.log_label = "label";
  log.log_tag_pair = {1, 65535};
  const auto song = AddSong(log, "1");
  song->vamps->events.emplace_back(0U, 480U, "", -128);
  song->clicks->events.emplace_back(480U, 0U, "", 127);
  song->tempo_scales->events.emplace_back(0U, 4294967295U, "", 1.1F);
  song->markers->events.emplace_back(0U, "", "A");
  song->caesuras->events.emplace_back(240U, "");
  EXPECT_THAT(Losses(log), IsEmpty());
}

TEST(LogLosses, NameEveryKind) {
  CL::ChangeLog log;
  const auto song = AddSong(log, "1");
  song->attacca = 3;
  song->division = 96;
  song->fermatas->events.emplace_back(1U, 2U, "", 3);
  song->cuts->events.emplace_back(0U, 1U, "", 128);
  song->tempo_scales->events.emplace_back(0U, 1U, "slow", 0.5F);
  song->markers->events.emplace_back(7U, "m", "A");
  for (const std::uint32_t word : {0U, 1U, 2U}) {
    song->caesuras->events.emplace_back(word, "").second_word = word;
  }
  EXPECT_THAT(Losses(log),
              ElementsAre("song 1: fermata-dropped fermatas[0] at 1: Fermata(1, 2, 3) -> ",
                          "song 1: attacca-dropped: 3 -> ", "song 1: division-dropped: 96 -> ",
                          "song 1: edit-value-cut cuts[0] at 0: Cut(0, 1, 128) -> Cut(0, 1, -128)",
                          "song 1: edit-label-dropped tempoScales[0] at 0: TempoScale(0, 1, 0.5) \"slow\" -> "
                          "TempoScale(0, 1, 0.5)",
                          "song 1: edit-label-dropped markers[0] at 7: Marker(7, A) \"m\" -> Marker(7, A)",
                          "song 1: second-word-defaulted caesuras[1] at 1: Caesura(1, 1) -> Caesura(1, 0)",
                          "song 1: caesura-dropped caesuras[2] at 2: Caesura(2, 2) -> "));
}

TEST(LogLosses, OfTheWayUpAreWhatTheFileHasBesides) {
  const Document legacy(LegacyLog{{}, 2, 3}, {}, "log");
  const Document current = Up(legacy, {}, {1, 2});
  EXPECT_THAT(zuna_test::Collected([&](const auto& sink) { LossesOfUp(legacy, current, sink); }),
              ElementsAre("song-replaced:  ->  x2", "sequence-replaced:  ->  x3"));
}

TEST(LogLosses, OfTheWayUpAreTheDivisionsThatTheShowLacks) {
  CL::ChangeLog log;
  for (const char* number : {"1", "2", "3"}) AddSong(log, number);
  const Document legacy(LegacyLog{version0::ChangeLogV0(log)}, {}, "log");
  Companion companion;
  companion.songs["2"].division = 480;
  companion.songs["3"].division = 0;
  const Document current = Up(legacy, companion, {1, 2});
  EXPECT_THAT(zuna_test::Collected([&](const auto& sink) { LossesOfUp(legacy, current, sink); }),
              ElementsAre("song 1: division-defaulted:  -> 0", "song 3: division-defaulted:  -> 0"));
}

}  // namespace
}  // namespace zuna_toolkit
