// Sequences that a later one of the same kind replaces are counted.
#include <gtest/gtest.h>

#include "tests/support/bytes.h"
#include "toolkit/document/open.h"

namespace zuna_toolkit {
namespace {

using zuna_test::Bytes;

std::string Word(std::size_t value) {
  const int low = static_cast<int>(value);
  return Bytes({low & 0xFF, low >> 8 & 0xFF, low >> 16 & 0xFF, low >> 24 & 0xFF});
}

std::string Text(const std::string& text) { return Bytes({static_cast<int>(text.size())}) + text; }

std::string Sequence(char code, const std::string& records) { return code + Word(records.size()) + records; }

const std::string kVamp = Bytes({'@', 9, 0, 0, 0, 0, 0, 1, 0, 0, 0, 2});
const std::string kTempoScale = Bytes({'D', 12, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0x80, 0x3F});
const std::string kCaesura = Bytes({'N', 4, 0, 7, 0, 0, 0});
const std::string kMarker = Bytes({7, 0, 0, 0, 1, 'A'});

/// A legacy log of one song with these sequences.
std::string LogOf(const std::string& sequences) {
  const std::string song = Word(sequences.size() - 4) + Text("1") + Text("Song") + Word(1920) + sequences;
  const std::string body = std::string(16, '\0') + Text("label") + Text("Show") + Word(0) + song;
  return "ZUNA" + Word(body.size()) + body;
}

const std::string kTempo = Bytes({'F', 12, 0, 0, 0, 0, 0, 0, 0, 0x80, 0x3A, 8, 8, 120, 0});
const std::string kLabel = Bytes({'G', 7, 0, 0, 0, 0, 0, 1, '1', 0});
const std::string kKey = Bytes({'H', 6, 0, 0, 0, 0, 0, 1, 0});
const std::string kPage = Bytes({'I', 6, 0, 0, 0, 0, 0, 1, 0});
const std::string kMeter = Bytes({'J', 6, 0, 0, 0, 0, 0, 4, 4});

/// A legacy song of one event with these sequences in its timeline.
std::string SongOf(const std::string& number, const std::string& sequences) {
  return Word(0) + Text(number) + Text("Song") + Bytes({224, 1}) + Word(1920) + Bytes({1, 1}) +
         Text("Piano") + Word(1) + Word(0) + Word(0) + Bytes({0x90, 60, 100, 1}) + "TLMN" + Text(number) +
         Word(1920) + Word(sequences.size()) + sequences;
}

Document Read(const std::string& bytes) {
  OpenedFile file =
      OpenedFile::FromBytes({bytes.begin(), bytes.end()}, "file", {}, Accept::kEncryptedOrPlain);
  return ReadDocument(file);
}

std::size_t ReplacedInLog(const std::string& sequences) {
  return Read(LogOf(sequences)).As<LegacyLog>()->replaced_sequences;
}

std::size_t ReplacedInShow(const std::string& songs, int count) {
  return Read(Bytes({count}) + songs).As<LegacyShow>()->replaced_sequences;
}

TEST(ReplacedSequences, AreCountedInLogs) {
  const std::string all = Sequence('@', kVamp + kVamp) + Sequence('D', kTempoScale) +
                          Sequence('N', kCaesura) + Sequence('E', kMarker + kMarker);
  EXPECT_EQ(ReplacedInLog(all), 0U);
  EXPECT_EQ(ReplacedInLog(all + all), 4U);
  EXPECT_EQ(ReplacedInLog(all + Sequence('D', "") + Sequence('D', kTempoScale)), 1U);
  EXPECT_EQ(ReplacedInLog(Sequence('@', "") + Sequence('@', kVamp)), 0U);  // nothing was lost
}

TEST(ReplacedSequences, AreCountedInShows) {
  const std::string all = Sequence('F', kTempo) + Sequence('G', kLabel + kLabel) + Sequence('H', kKey) +
                          Sequence('I', kPage) + Sequence('J', kMeter);
  EXPECT_EQ(ReplacedInShow(SongOf("1", all) + SongOf("2", all), 2), 0U);
  EXPECT_EQ(ReplacedInShow(SongOf("1", all + all) + SongOf("2", all + Sequence('J', kMeter)), 2), 6U);
  EXPECT_EQ(ReplacedInShow(SongOf("1", Sequence('J', "") + all), 1), 0U);
}

}  // namespace
}  // namespace zuna_toolkit
