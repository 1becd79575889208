// What comes back of legacy files in which a few bytes are missing: every other
// song, and what is left of the damaged one.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/legacy_samples.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sanitized.h"
#include "tests/toolkit/rescue/rescue_samples.h"

namespace {

using zuna_test::Part;
using zuna_test::RescuedOf;
using zuna_test::Sample;
using zuna_toolkit::LegacyLog;
using zuna_toolkit::LegacyShow;
using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::SongState;

/// The sample of a file of `songs`, which end where it does.
template <typename Songs>
Sample SampleOf(std::string bytes, const Songs& songs) {
  Sample sample{std::move(bytes), {}};
  std::size_t end = sample.bytes.size();
  for (auto song = songs.rbegin(); song != songs.rend(); ++song) {
    const std::string written = zuna_test::Written(song->second);
    sample.parts.insert(sample.parts.begin(), {song->first, end - written.size(), end, written});
    end -= written.size();
  }
  return sample;
}

/// Three songs that end with meters, and one without any.
Sample ShowSample() {
  version0::ShowData show;
  for (const char* number : {"1", "2", "2a", "3"}) {
    version0::SongData song = zuna_test::SampleLegacySong(number, 480);
    song.timeline.bars_beats = {{0, "1", 0}, {1920, "2", 0}};
    song.timeline.meters.emplace_back(1920, 4, 7);
    show.songs[number] = song;
  }
  show.songs["2a"].timeline.meters.clear();
  return SampleOf(zuna_test::Written(show), show.songs);
}

/// Songs that end with a marker, with a short and a long one, and without any.
Sample LogSample() {
  version0::ChangeLogV0 log = zuna_test::SampleLegacyLog();
  for (const char* number : {"3", "4", "5"}) {
    log.songs[number] = log.songs["12a"];
    log.songs[number].songNumber_ = number;
  }
  log.songs["3"].score_markers.emplace_back(480, "B");
  log.songs["4"].score_markers = {{0, "Letter A"}, {960, ""}};
  log.songs["5"].score_markers = {{480, std::string(60, 'x')}};
  return SampleOf(zuna_test::Written(log), log.songs);
}

std::string SongOf(const Rescued& rescued, const std::string& number) {
  if (const auto* log = rescued.document.As<LegacyLog>()) {
    const auto song = log->log.songs.find(number);
    return song == log->log.songs.end() ? "" : zuna_test::Written(song->second);
  }
  const auto& songs = rescued.document.As<LegacyShow>()->show.songs;
  const auto song = songs.find(number);
  return song == songs.end() ? "" : zuna_test::Written(song->second);
}

SongState StateOf(const Rescued& rescued, const std::string& number) {
  for (const RescuedSong& song : rescued.report.songs) {
    if (song.number == number) return song.state;
  }
  return SongState::kLost;
}

/// Every song but those in which bytes are missing comes back of `sample`
/// without the `count` bytes at `at`.
void ExpectOthers(const Sample& sample, std::size_t at, std::size_t count) {
  SCOPED_TRACE(std::to_string(count) + " bytes at " + std::to_string(at));
  const std::string damaged = std::string(sample.bytes).erase(at, count);
  std::size_t first = at;  // of all the places that give the same bytes
  while (first > 0 && sample.bytes[first - 1] == sample.bytes[first - 1 + count]) --first;
  std::size_t end = at + count;
  while (end < sample.bytes.size() && sample.bytes[end] == sample.bytes[end - count]) ++end;
  const Rescued rescued = RescuedOf(damaged);
  EXPECT_EQ(zuna_test::WrongAccount(rescued.report, damaged.size()), "");
  for (const Part& part : sample.parts) {
    SCOPED_TRACE("song " + part.number);
    const bool is_touched = part.begin < end && first < part.end;
    const bool is_inside = part.begin <= first && end <= part.end;
    const bool is_whole = StateOf(rescued, part.number) == SongState::kWhole;
    EXPECT_TRUE(is_touched || (is_whole && SongOf(rescued, part.number) == part.bytes));
    EXPECT_FALSE(is_inside && is_whole);
  }
  EXPECT_FALSE(rescued.report.complete());
}

constexpr std::size_t kEndOfASong = 60;  // bytes

void ExpectOthersEverywhere(const Sample& sample) {
  EXPECT_TRUE(RescuedOf(sample.bytes).report.complete());
  const std::size_t begin = sample.parts.front().begin;
  for (std::size_t at = begin; at < sample.bytes.size(); at = zuna_test::NextCut(at)) {
    ExpectOthers(sample, at, 1);
  }
  for (const Part& part : sample.parts) {
    for (const std::size_t count : {2U, 3U, 5U, 9U, 20U}) {
      for (std::size_t at = part.end - std::min(kEndOfASong, part.end - part.begin); at + count <= part.end;
           at = zuna_test::NextCut(at)) {
        ExpectOthers(sample, at, count);
      }
    }
  }
}

TEST(RescueAroundMissingBytes, SavesTheOtherSongsOfAShow) { ExpectOthersEverywhere(ShowSample()); }

TEST(RescueAroundMissingBytes, SavesTheOtherSongsOfALog) { ExpectOthersEverywhere(LogSample()); }

using Texts = std::vector<std::string>;

/// What is told of the song of this number in `bytes` without the first record of the list that begins at
/// `list`. Nothing but this song is damaged, and all of its other lists are there.
Texts ToldWithoutARecord(const Sample& sample, std::size_t song, std::size_t list, std::size_t record_size) {
  const std::size_t record = list + 5;  // after code and length of the list
  const Rescued rescued = RescuedOf(std::string(sample.bytes).erase(record, record_size));
  const Part& part = sample.parts.at(song);
  const std::string body = part.bytes.substr(part.bytes.size() - (part.end - list) + 5 + record_size);
  const std::string saved = SongOf(rescued, part.number);
  EXPECT_TRUE(saved.ends_with(body)) << "what follows the record";
  EXPECT_EQ(StateOf(rescued, part.number), SongState::kPartly);
  EXPECT_EQ(rescued.report.unread, std::vector<zuna_toolkit::ByteRange>());
  EXPECT_EQ(rescued.report.missing, Texts());
  EXPECT_FALSE(rescued.report.complete());
  const std::string size = std::to_string(sample.bytes.size());
  const std::string left = std::to_string(sample.bytes.size() - record_size);
  if (sample.bytes.starts_with("ZUNA")) {
    EXPECT_EQ(rescued.report.remarks.back(), "has " + left + " bytes, and its header states " + size);
  }
  return rescued.report.songs.at(song).remarks;
}

TEST(RescueAroundMissingBytes, TellsThatARecordOfAShowIsMissing) {
  const Sample show = ShowSample();
  for (std::size_t song = 0; song < show.parts.size(); ++song) {
    if (show.parts[song].number == "2a") continue;  // it gets a meter then
    SCOPED_TRACE(song);
    const std::size_t labels = show.bytes.find("G\x14", show.parts[song].begin);
    EXPECT_EQ(ToldWithoutARecord(show, song, labels, 10).at(0), "some of its bar labels may be missing")
        << "it is as long as the two empty lists that follow";
  }
  const std::size_t meters = show.bytes.find("J\x12");
  EXPECT_EQ(ToldWithoutARecord(show, 0, meters, 9).at(0), "some of its meters are missing");
}

TEST(RescueAroundMissingBytes, TellsThatARecordOfALogIsMissing) {
  const Sample log = LogSample();
  for (std::size_t song = 0; song < log.parts.size(); ++song) {
    if (log.parts[song].number == "2") continue;  // it is empty
    SCOPED_TRACE(song);
    const std::size_t begin = log.parts[song].begin;
    EXPECT_EQ(ToldWithoutARecord(log, song, log.bytes.find("@\x0C", begin), 12),
              Texts{"some of its vamps may be missing"});
    EXPECT_EQ(ToldWithoutARecord(log, song, log.bytes.find("D\x0F", begin), 15),
              Texts{"some of its tempo scales may be missing"});
  }
}

TEST(RescueAroundMissingBytes, TakesNoEmptyListsForTheRecordThatIsMissing) {
  version0::ChangeLogV0 log = zuna_test::SampleLegacyLog();
  version0::SongLogV0& song = log.songs["12a"];
  song.transposes.clear();
  song.caesuras.clear();
  song.score_markers.clear();
  const Sample sample = SampleOf(zuna_test::Written(log), log.songs);
  EXPECT_EQ(ToldWithoutARecord(sample, 0, sample.bytes.find("D\x0F"), 15),
            Texts{"some of its tempo scales may be missing"});
}

}  // namespace
