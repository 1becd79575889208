// Every finding about logs, by its text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/legacy_samples.h"
#include "tests/toolkit/checking/describe.h"

namespace zuna_toolkit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The findings about a log of one song of 1920 ticks, after `change(song)`.
template <typename Change>
std::vector<std::string> FindingsAfter(Change change) {
  const auto song = std::make_shared<CL::SongLog>("1", "Song", static_cast<unsigned short>(480), 1920U);
  change(*song);
  CL::ChangeLog log;
  log.AddSongLog(song);
  return zuna_test::FindingsOf({log, {1, 2}, "log"});
}

TEST(CheckLog, FindsNothingInASoundLog) {
  EXPECT_THAT(FindingsAfter([](CL::SongLog& song) {
                song.vamps->events = {{1920, 1920, "x", 1}};
                song.cuts->events = {{480, 960, "", -1}, {0, 480, "", 0}};
                song.tempo_scales->events = {{0, 480, "", 0.5F}};
                song.markers->events = {{1920, "", "A"}};
              }),
              IsEmpty());
}

TEST(CheckLog, FindsTheHeader) {
  CL::ChangeLog log;
  log.show_name.assign("\xFF");
  log.log_label.assign("\xFF");
  EXPECT_THAT(zuna_test::FindingsOf({log, {1, 2}, "log"}),
              ElementsAre("warning text-not-utf8: the show name is not valid UTF-8",
                          "warning text-not-utf8: the log label is not valid UTF-8",
                          "warning log-empty: there are no songs"));
}

TEST(CheckLog, FindsFieldsOfASong) {
  EXPECT_THAT(FindingsAfter([](CL::SongLog& song) {
                song.song_number.clear();
                song.song_name.assign("\xFF");
                song.song_length = 0;
                song.division = 0;
              }),
              ElementsAre("warning song-number-empty: the song number is empty",
                          "warning text-not-utf8: the song name is not valid UTF-8",
                          "error song-length-zero: the length of the song is 0",
                          "warning division-unknown: the division is 0"));
}

TEST(CheckLog, FindsSongsThatLackAPart) {
  EXPECT_THAT(FindingsAfter([](CL::SongLog& song) { song.markers = nullptr; }),
              ElementsAre("error song-incomplete, song 1: a list of edits is missing"));
  CL::ChangeLog log;
  log.song_logs()["1"] = nullptr;
  EXPECT_THAT(zuna_test::FindingsOf({log, {1, 2}, "log"}),
              ElementsAre("error song-incomplete, song 1: the song log is missing"));
}

TEST(CheckLog, FindsPlacesOfEdits) {
  EXPECT_THAT(
      FindingsAfter([](CL::SongLog& song) {
        song.fermatas->events = {{480, 240, "", 0}};
        song.clicks->events = {{480, 1921, "", 0}};
        song.transposes->events = {{1921, 0, "", 0}};
        song.markers->events = {{1921, "", "A"}};
        song.caesuras->events = {{1922, ""}};
      }),
      ElementsAre("error edit-reversed, song 1, transposes[0] at 1921: the transposition at 1921 ends at 0",
                  "warning edit-beyond-end, song 1, transposes[0] at 1921: the transposition at 1921 reaches "
                  "to 0, after "
                  "the end of the song at 1920",
                  "warning edit-beyond-end, song 1, clicks[0] at 480: the click at 480 reaches to 1921, "
                  "after the end of "
                  "the song at 1920",
                  "error edit-reversed, song 1, fermatas[0] at 480: the fermata at 480 ends at 240",
                  "warning edit-beyond-end, song 1, markers[0] at 1921: the marker at 1921 is after the end "
                  "of the song at "
                  "1920",
                  "warning edit-beyond-end, song 1, caesuras[0] at 1922: the caesura at 1922 is after the "
                  "end of the song "
                  "at 1920"));
}

TEST(CheckLog, FindsTexts) {
  EXPECT_THAT(
      FindingsAfter([](CL::SongLog& song) {
        song.vamps->events = {{0, 480, "\xFF", 1}};
        song.markers->events = {{480, "\xFF", "\xFF"}};
        song.caesuras->events = {{480, "\xFF"}};
      }),
      ElementsAre(
          "warning text-not-utf8, song 1, vamps[0] at 0: the label of the vamp at 0 is not valid UTF-8",
          "warning text-not-utf8, song 1, markers[0] at 480: the text of the marker at 480 is not valid "
          "UTF-8",
          "warning text-not-utf8, song 1, markers[0] at 480: the label of the marker at 480 is not valid "
          "UTF-8",
          "warning text-not-utf8, song 1, caesuras[0] at 480: the label of the caesura at 480 is not valid "
          "UTF-8"));
}

TEST(CheckLog, FindsValues) {
  EXPECT_THAT(
      FindingsAfter([](CL::SongLog& song) {
        song.vamps->events = {{0, 480, "", 0}};
        song.repeats->events = {{0, 480, "", -1}};
        song.tempo_scales->events = {{0, 1, "", 0.0F}, {1, 2, "", std::numeric_limits<float>::infinity()}};
      }),
      ElementsAre(
          "warning vamp-count-not-positive, song 1, vamps[0] at 0: the vamp at 0 has the number 0",
          "error repeat-count-not-positive, song 1, repeats[0] at 0: the repeat at 0 has the number -1",
          "error tempo-scale-not-positive, song 1, tempoScales[0] at 0: the tempo scale at 0 has the "
          "factor 0",
          "error tempo-scale-not-positive, song 1, tempoScales[1] at 1: the tempo scale at 1 has the "
          "factor inf"));
}

TEST(CheckLegacyLog, FindsItsRecords) {
  LegacyLog log;
  log.replaced_songs = 2;
  log.replaced_sequences = 1;
  log.log.show_name.assign("\xFF");
  version0::SongLogV0& song = log.log.songs["1"];
  song.songNumber_.assign(1, '1');
  song.songLength_ = 1920;
  song.vamps = {{0, 480, 0}};
  song.repeats = {{0, 480, -1}};
  song.cuts = {{480, 0, 0}};
  song.transposes = {{0, 1921, 0}};
  song.clicks = {{0, 480, 0}};
  song.tempo_scales = {{0, 480, -1.5F}};
  song.caesuras = {version0::XCaesura(2000)};
  song.score_markers = {{0, "\xFF"}};
  EXPECT_THAT(
      zuna_test::FindingsOf({log, {}, "log"}),
      ElementsAre(
          "warning song-repeated: 2 songs were replaced by a later song of the same number",
          "warning sequence-repeated: 1 list was replaced by a later list of the same kind",
          "warning text-not-utf8: the show name is not valid UTF-8",
          "warning vamp-count-not-positive, song 1, vamps[0] at 0: the vamp at 0 has the number 0",
          "error repeat-count-not-positive, song 1, repeats[0] at 0: the repeat at 0 has the number -1",
          "error edit-reversed, song 1, cuts[0] at 480: the cut at 480 ends at 0",
          "warning edit-beyond-end, song 1, transposes[0] at 0: the transposition at 0 reaches to 1921, "
          "after the end of the song at 1920",
          "error tempo-scale-not-positive, song 1, tempoScales[0] at 0: the tempo scale at 0 has the "
          "factor -1.5",
          "warning text-not-utf8, song 1, markers[0] at 0: the text of the marker at 0 is not valid UTF-8",
          "warning edit-beyond-end, song 1, caesuras[0] at 2000: the caesura at 2000 is after the end of "
          "the song at 1920"));
  EXPECT_THAT(zuna_test::FindingsOf({LegacyLog{}, {}, "log"}),
              ElementsAre("warning log-empty: there are no songs"));
}

}  // namespace
}  // namespace zuna_toolkit
