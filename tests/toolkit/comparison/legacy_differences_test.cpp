// Two legacy documents differ in everything that only they hold, and two files of one version in every byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <sstream>

#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/toolkit/comparison/describe.h"
#include "tests/toolkit/comparison/random_documents.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/document/text_form.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// The sample's song "7" with an event and a track more.
version0::ShowData Sample() {
  version0::ShowData show = zuna_test::SampleLegacyShow();
  version0::SongData& song = show.songs.at("7");
  song.timeline.bars_beats = {{0, "1", 0}};
  song.tracks.emplace_back(std::uint8_t{2}, "Harp");
  song.events[1].emplace_back(480, 960, 0x80, 60, 0, 1);
  return show;
}

std::vector<std::string> Compared(const version0::ShowData& before, const version0::ShowData& after,
                                  std::size_t trailing_bytes = 0) {
  return zuna_test::Collected([&](const DifferenceSink& sink) {
    Compare({LegacyShow{before}, kLegacyVersion, "before"},
            {LegacyShow{after, 0, trailing_bytes}, kLegacyVersion, "after"}, sink);
  });
}

/// What differs where `change` changes the song "7" of the sample.
std::vector<std::string> Changed(const std::function<void(version0::SongData&)>& change) {
  version0::ShowData after = Sample();
  change(after.songs.at("7"));
  return Compared(Sample(), after);
}

TEST(LegacyDifferences, AreNoneBetweenEqualShows) { EXPECT_THAT(Compared(Sample(), Sample()), IsEmpty()); }

TEST(LegacyDifferences, HaveTheTimeline) {
  EXPECT_THAT(Changed([](auto& song) { song.timeline.name = "x"; }),
              ElementsAre("song 7: timeline-name-changed: 7 -> x"));
  EXPECT_THAT(Changed([](auto& song) { song.timeline.song_length = 5; }),
              ElementsAre("song 7: timeline-length-added:  -> 5"));
  EXPECT_THAT(
      Changed([](auto& song) { song.timeline.tempos[0].bpm = 7; }),
      ElementsAre("song 7: tempo-changed tempos[0] at 0 in bar 1: 0.00520833349 s a tick and 120 bpm "
                  "with a click of 8 of 8 32nds -> 0.00520833349 s a tick and 7 bpm with a click of 8 "
                  "of 8 32nds"));
  EXPECT_THAT(Changed([](auto& song) { song.timeline.bars_beats[0].label = "1 and more than that"; }),
              ElementsAre("song 7: bar-label-changed barsBeats[0] at 0 in bar 1: \"1\" -> "
                          "\"1 and more than that\""));
}

TEST(LegacyDifferences, HaveTracksAndEvents) {
  EXPECT_THAT(Changed([](auto& song) { std::swap(song.tracks[0], song.tracks[1]); }),
              ElementsAre("song 7: voice-reordered voices[0]: 1, 2 -> 2, 1"));
  EXPECT_THAT(Changed([](auto& song) {
                for (auto& event : song.events[1]) event.delta_time += 1;
              }),
              ElementsAre("song 7: delta-time-changed messages[0] at 480 in bar 1 (track 1): 480 -> 481 x2"));
  // Each with its own values.
  EXPECT_THAT(Changed([](auto& song) {
                song.events[1][0].delta_time = 1;
                song.events[1][1].delta_time = 2;
              }),
              ElementsAre("song 7: delta-time-changed messages[0] at 480 in bar 1 (track 1): 480 -> 1",
                          "song 7: delta-time-changed messages[1] at 960 in bar 1 (track 1): 480 -> 2"));
  EXPECT_THAT(
      Changed([](auto& song) { song.events[1][1].status_high = 0x81; }),
      ElementsAre(
          "song 7: message-channel-changed messages[1] at 960 in bar 1 (track 1): status 128 -> 129"));
}

TEST(LegacyDifferences, HaveBytesAfterTheLastSong) {
  EXPECT_THAT(Compared(Sample(), Sample(), 3), ElementsAre("trailing-bytes-changed: 0 -> 3"));
}

TEST(LegacyDifferences, AreInTheCurrentFormWhereOneDocumentIsCurrent) {
  version0::ShowData odd = Sample();
  odd.songs.at("7").timeline.name = "x";
  const Document current(Sample().get_version_1_0(), {1, 2}, "current");
  EXPECT_THAT(Compare({LegacyShow{odd}, kLegacyVersion, "legacy"}, current), IsEmpty());
}

OpenedFile FileOf(const std::string& plaintext) {
  return OpenedFile::FromBytes({plaintext.begin(), plaintext.end()}, "file", {}, Accept::kEncryptedOrPlain);
}

std::vector<std::string> ComparedFiles(const std::string& before, const std::string& after) {
  return zuna_test::Collected([&](const DifferenceSink& sink) {
    OpenedFile a = FileOf(before);
    OpenedFile b = FileOf(after);
    Compare(a, b, sink);
  });
}

template <typename Model>
std::string Written(const Model& model) {
  std::ostringstream os;
  model.write_binary(os);
  return os.str();
}

TEST(FileDifferences, HaveBytesThatNoFieldTells) {
  const std::string show = Written(Sample());
  EXPECT_THAT(ComparedFiles(show, show), IsEmpty());
  std::string after = show;
  after[1] = 'x';  // of the record length of the first song
  EXPECT_THAT(ComparedFiles(show, after),
              ElementsAre(testing::MatchesRegex("other-bytes-changed: .. at byte 1 -> 78")));
}

TEST(FileDifferences, HaveTextThatNoFieldTells) {
  const std::string text = zuna_test::WrittenAt(Sample().get_version_1_0(), {2, 0});
  EXPECT_THAT(ComparedFiles(text, text + " "),
              ElementsAre("other-bytes-changed: the end at byte " + std::to_string(text.size()) + " -> 20"));
}

TEST(FileDifferences, AreNoneBetweenAFileAndItsTextForm) {
  const std::string show = Written(Sample());
  OpenedFile file = FileOf(show);
  std::ostringstream text;
  WriteTextForm(ReadDocument(file), text);
  EXPECT_THAT(ComparedFiles(show, text.str()), IsEmpty());
  EXPECT_THAT(ComparedFiles(text.str(), text.str()), IsEmpty());
  EXPECT_THAT(ComparedFiles(text.str(), text.str() + "\n"), SizeIs(1));
}

/// The type of what a file holds; nothing where it cannot be read.
std::optional<FileType> TypeOf(const std::string& plaintext) {
  try {
    OpenedFile file = FileOf(plaintext);
    return ReadDocument(file).type();
  } catch (const Error&) {
    return std::nullopt;
  }
}

/// Changes single bytes of `plaintext`; returns how many of the files that this gives were compared.
int ChangeBytes(const std::string& plaintext, std::mt19937& random) {
  constexpr int kTries = 10;
  const auto type = TypeOf(plaintext);
  int compared = 0;
  for (int i = 0; i < kTries; ++i) {
    std::string after = plaintext;
    const std::size_t offset = random() % after.size();
    after[offset] = static_cast<char>(after[offset] + 1 + static_cast<int>(random() % 255));
    if (TypeOf(after) != type) continue;
    try {
      EXPECT_THAT(ComparedFiles(plaintext, after), testing::Not(IsEmpty())) << "byte " << offset;
      EXPECT_THAT(ComparedFiles(after, plaintext), testing::Not(IsEmpty())) << "byte " << offset;
      ++compared;
    } catch (const Error& error) {
      EXPECT_TRUE(type->is_legacy()) << error.what();  // It cannot be brought to its current form.
    }
  }
  return compared;
}

TEST(FileDifferences, AreToldWhateverByteDiffers) {
  std::mt19937 random(7);
  int compared = 0;
  for (int round = 0; round < 60; ++round) {
    const std::string legacy_show = Written(zuna_test::OddLegacyShow(random));
    compared += ChangeBytes(legacy_show, random);
    compared += ChangeBytes(Written(zuna_test::RandomLegacyLog(random)), random);
    const zuna_midi::ShowData show = zuna_test::RandomShow(random, {});
    const CL::ChangeLog log = zuna_test::RandomLog(random, {});
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 1}, cmn::FileVersion{2, 0}}) {
      compared += ChangeBytes(zuna_test::WrittenAt(show, version), random);
      compared += ChangeBytes(zuna_test::WrittenAt(log, version), random);
    }
  }
  EXPECT_GT(compared, 300);
}

}  // namespace
}  // namespace zuna_toolkit
