// The fields of binary log files: what is refused, by name and offset.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>

#include "tests/platform/core/file/kinds.h"

namespace {

using zuna_test::BodyOf;
using zuna_test::Hex;
using zuna_test::SampleLogFile;

constexpr cmn::FileVersion kFixed{1, 1};
constexpr cmn::FileVersion kCompact{1, 2};

/// The error of a file with this body.
std::string BodyError(cmn::FileVersion version, const std::string& body) {
  return zuna_test::ReadError<CL::ChangeLog>(zuna_test::BinaryFile(cmn::FileKind::kLog, version, body));
}

/// The error of the sample with `size` bytes of its body replaced.
std::string PatchedError(cmn::FileVersion version, std::size_t place, std::size_t size,
                         const std::string& digits) {
  return BodyError(version, zuna_test::PatchedBody(SampleLogFile(version), place, size, digits));
}

/// Where the counts and lengths of the sample's body stand, and what each is named in messages.
struct Count {
  std::size_t fixed;
  std::size_t compact;
  const char* name;
};

constexpr Count kCounts[] = {
    {0, 0, "showName"},
    {7, 4, "logLabel"},
    {32, 26, "songLogs"},
    {36, 27, "songNumber"},
    {42, 30, "song \"2b\", songName"},
    {55, 38, "song \"2b\", vamps"},
    {67, 42, "song \"2b\", vamps[0].label"},
    {83, 48, "song \"2b\", vamps[1].label"},
    {98, 57, "song \"2b\", repeats"},
    {118, 64, "song \"2b\", cuts"},
    {139, 75, "song \"2b\", transposes"},
    {159, 81, "song \"2b\", tempoScales"},
    {187, 94, "song \"2b\", tempoScales[1].label"},
    {195, 99, "song \"2b\", clicks"},
    {215, 105, "song \"2b\", fermatas"},
    {235, 112, "song \"2b\", markers"},
    {243, 114, "song \"2b\", markers[0].label"},
    {261, 121, "song \"2b\", markers[1].text"},
    {269, 126, "song \"2b\", caesuras"},
    {277, 129, "song \"2b\", caesuras[0].label"},
};

/// The error names the field and the count.
void ExpectRefused(const std::string& error, const std::string& name) {
  EXPECT_THAT(error, testing::StartsWith(name + ": "));
  EXPECT_THAT(error, testing::HasSubstr("4294967295 "));
}

TEST(BinaryLog, CountThatTheFileCannotHoldIsRefusedByName) {
  for (const Count& count : kCounts) {
    std::string error = PatchedError(kFixed, count.fixed, 4, "FFFFFFFF");
    ExpectRefused(error, count.name);
    error = PatchedError(kCompact, count.compact, 1, "FFFFFFFF0F");
    ExpectRefused(error, count.name);
  }
}

TEST(BinaryLog, EntriesAreCountedAtTheirSmallestSize) {
  EXPECT_EQ(
      PatchedError(kFixed, 32, 4, "05000000"),  // the rest is 4 songs of 2 * 4 + 2 + 4 + 1 + 9 * 4 bytes
      "songLogs: 5 entries do not fit into the remaining 249 bytes (at byte 46)");
  EXPECT_EQ(PatchedError(kCompact, 26, 1, "08"),  // a song is 2 + 1 + 1 + 1 + 9
            "songLogs: 8 entries do not fit into the remaining 105 bytes (at byte 37)");
  EXPECT_EQ(PatchedError(kFixed, 215, 4, "05000000"),  // a paired event is 4 + 4 + 4 + 4
            "song \"2b\", fermatas: 5 entries do not fit into the remaining 66 bytes (at byte 229)");
  EXPECT_EQ(PatchedError(kCompact, 105, 1, "07"),  // 1 + 1 + 1 + 1
            "song \"2b\", fermatas: 7 entries do not fit into the remaining 26 bytes (at byte 116)");
  EXPECT_EQ(PatchedError(kCompact, 81, 1, "08"),  // a tempo scale is 1 + 1 + 1 + 4
            "song \"2b\", tempoScales: 8 entries do not fit into the remaining 50 bytes (at byte 92)");
  EXPECT_EQ(PatchedError(kFixed, 235, 4, "04000000"),  // a marker is 4 + 4 + 4
            "song \"2b\", markers: 4 entries do not fit into the remaining 46 bytes (at byte 249)");
  EXPECT_EQ(PatchedError(kCompact, 112, 1, "07"),  // 1 + 1 + 1
            "song \"2b\", markers: 7 entries do not fit into the remaining 19 bytes (at byte 123)");
  EXPECT_EQ(PatchedError(kCompact, 126, 1, "02"),  // a caesura is 1 + 1 + 1
            "song \"2b\", caesuras: 2 entries do not fit into the remaining 5 bytes (at byte 137)");
}

TEST(CompactLog, NumbersStandInTheirShortestFormAndRange) {
  const std::string form = "expected a variable-length integer in its shortest form";
  EXPECT_EQ(PatchedError(kCompact, 22, 1, "8100"), "tagPair: " + form + " (at byte 32)");
  EXPECT_EQ(PatchedError(kCompact, 22, 1, "808004"),
            "tagPair: 65536 is above the maximum, 65535 (at byte 32)");
  EXPECT_EQ(PatchedError(kCompact, 33, 2, "808004"),
            "song \"2b\", division: 65536 is above the maximum, 65535 (at byte 43)");
  EXPECT_EQ(PatchedError(kCompact, 35, 2, "8080808010"),
            "song \"2b\", songLength: 4294967296 is above the maximum, 4294967295 (at byte 45)");
  EXPECT_EQ(PatchedError(kCompact, 39, 1, "8080808010"),
            "song \"2b\", vamps[0].start: 4294967296 is above the maximum, 4294967295 (at byte 49)");
  EXPECT_EQ(PatchedError(kCompact, 56, 1, "8100"), "song \"2b\", vamps[1].value: " + form + " (at byte 66)");
  EXPECT_EQ(PatchedError(kCompact, 130, 2, "8000"),
            "song \"2b\", caesuras[0].secondWord: " + form + " (at byte 140)");
}

TEST(BinaryLog, FieldThatIsCutOffIsNamed) {
  const std::string body = BodyOf(SampleLogFile(kFixed));
  const auto error = [&](std::size_t size) { return BodyError(kFixed, body.substr(0, size)); };
  EXPECT_EQ(error(2), "showName: needs 4 bytes, only 2 remain (at byte 10)");
  EXPECT_EQ(error(20), "identifier: needs 16 bytes, only 8 remain (at byte 22)");
  EXPECT_EQ(error(29), "tagPair: needs 2 bytes, only 1 remain (at byte 38)");
  EXPECT_EQ(error(35), "songLogs: needs 4 bytes, only 3 remain (at byte 42)");
  EXPECT_EQ(PatchedError(kFixed, 277, 4, "01000000"),
            "song \"2b\", caesuras[0].secondWord: needs 4 bytes, only 3 remain (at byte 292)");
  EXPECT_EQ(BodyError(kFixed, body + "x"), "end: unexpected bytes after the last field: 1 (at byte 295)");
  EXPECT_EQ(BodyError(kCompact, BodyOf(SampleLogFile(kCompact)) + "xy"),
            "end: unexpected bytes after the last field: 2 (at byte 142)");
}

/// The error of the sample with its song twice.
std::string TwoSongsError(cmn::FileVersion version, std::size_t count_at, std::size_t song_at) {
  std::string body = BodyOf(SampleLogFile(version));
  const std::string song = body.substr(song_at);
  body[count_at] = 2;
  return BodyError(version, body + song);
}

TEST(BinaryLog, NothingVanishesInASecondSongOfTheSameNumber) {
  EXPECT_EQ(TwoSongsError(kFixed, 32, 36),
            "song \"2b\", songNumber: the log has another song of the same number (at byte 544)");
  EXPECT_EQ(TwoSongsError(kCompact, 26, 27),
            "song \"2b\", songNumber: the log has another song of the same number (at byte 247)");
}

TEST(CompactLog, PositionsMayRunBackwardsAndWrap) {
  CL::ChangeLog log;
  auto song = std::make_shared<CL::SongLog>("", "", static_cast<unsigned short>(0), 0U);
  song->cuts->events = {{0xFFFFFFFF, 0, "", 0}, {0, 0xFFFFFFFF, "", 0}};
  log.AddSongLog(song);
  const std::string bytes = zuna_test::Write(log, kCompact);
  EXPECT_EQ(BodyOf(bytes).substr(26),
            Hex("00 00"                     // vamps, repeats
                "02"                        // cuts
                "FF FF FF FF 0F  01 00 00"  // start + 4294967295, end + 1 wraps to 0
                "01  FF FF FF FF 0F 00 00"  // start + 1 wraps to 0
                "00 00 00 00 00 00"));      // the lists behind
  const CL::ChangeLog read = zuna_test::Read<CL::ChangeLog>(bytes);
  EXPECT_EQ(read.GetSongLog("")->cuts->events[0].end, 0U);
  EXPECT_EQ(read.GetSongLog("")->cuts->events[1].start, 0U);
  EXPECT_EQ(read.GetSongLog("")->cuts->events[1].end, 0xFFFFFFFFU);
}

}  // namespace
