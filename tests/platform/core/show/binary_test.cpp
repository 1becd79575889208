// The fields of binary show files: what is refused, by name and offset.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

#include "tests/platform/core/file/kinds.h"

namespace {

using zuna_test::BodyOf;
using zuna_test::Hex;
using zuna_test::SampleShowFile;

constexpr cmn::FileVersion kFixed{1, 0};
constexpr cmn::FileVersion kChecked{1, 1};
constexpr cmn::FileVersion kCompact{1, 2};

/// The error of a file with this body.
std::string BodyError(cmn::FileVersion version, const std::string& body) {
  return zuna_test::ReadError<zuna_midi::ShowData>(
      zuna_test::BinaryFile(cmn::FileKind::kShow, version, body));
}

/// The error of the sample with `size` bytes of its body replaced.
std::string PatchedError(cmn::FileVersion version, std::size_t place, std::size_t size,
                         const std::string& digits) {
  return BodyError(version, zuna_test::PatchedBody(SampleShowFile(version), place, size, digits));
}

/// Where the counts and lengths of the sample's body stand, and what each is named in messages.
struct Count {
  std::size_t fixed;
  std::size_t compact;
  const char* name;
};

constexpr Count kCounts[] = {
    {0, 0, "showName"},
    {7, 4, "songs"},
    {11, 5, "songNumber"},
    {17, 8, "song \"2b\", songName"},
    {29, 15, "song \"2b\", tempos"},
    {49, 25, "song \"2b\", barsBeats"},
    {79, 37, "song \"2b\", keys"},
    {91, 41, "song \"2b\", pageNumbers"},
    {103, 46, "song \"2b\", meters"},
    {115, 52, "song \"2b\", voices"},
    {121, 54, "song \"2b\", voice 1, name"},
    {132, 63, "song \"2b\", voice 1, messages"},
    {159, 78, "song \"2b\", voice 300, name"},
    {165, 80, "song \"2b\", voice 300, messages"},
};

/// The error names the field and the count.
void ExpectRefused(const std::string& error, const std::string& name) {
  EXPECT_THAT(error, testing::StartsWith(name + ": "));
  EXPECT_THAT(error, testing::HasSubstr("4294967295 "));
}

TEST(BinaryShow, CountThatTheFileCannotHoldIsRefusedByName) {
  for (const Count& count : kCounts) {
    for (const cmn::FileVersion& version : {kFixed, kChecked}) {
      const std::string error = PatchedError(version, count.fixed, 4, "FFFFFFFF");
      ExpectRefused(error, count.name);
    }
    const std::string error = PatchedError(kCompact, count.compact, 1, "FFFFFFFF0F");
    ExpectRefused(error, count.name);
  }
}

TEST(BinaryShow, ErrorsNameSongVoiceFieldAndOffset) {
  EXPECT_EQ(PatchedError(kFixed, 132, 4, "404B4C00"),
            "song \"2b\", voice 1, messages: 5000000 entries do not fit into the remaining 33 bytes (at byte "
            "146)");
  EXPECT_EQ(PatchedError(kFixed, 0, 4, "00000001"),
            "showName: needs 16777216 bytes, only 165 remain (at byte 14)");
  EXPECT_EQ(
      PatchedError(kCompact, 63, 1, "7F"),
      "song \"2b\", voice 1, messages: 127 entries do not fit into the remaining 17 bytes (at byte 74)");
}

TEST(BinaryShow, TextOfABarNumberEndsWithZeros) {
  const std::string message =
      "song \"2b\", barsBeats[1].barNumber: expected a text that is filled up with zero bytes (at byte 88)";
  EXPECT_EQ(PatchedError(kFixed, 70, 8, "3132610000000001"), message);
  EXPECT_EQ(PatchedError(kFixed, 70, 8, "3132333435363738"), message);
  EXPECT_EQ(PatchedError(kFixed, 70, 8, "3132333435363700"), "");
}

TEST(CompactShow, BarNumberHasAtMostSevenBytesAndNoNul) {
  EXPECT_EQ(PatchedError(kCompact, 32, 4, "08 3132333435363738"),
            "song \"2b\", barsBeats[1].barNumber: a bar number has at most 7 bytes (at byte 51)");
  EXPECT_EQ(PatchedError(kCompact, 32, 4, "03 310061"),
            "song \"2b\", barsBeats[1].barNumber: a bar number cannot contain a NUL byte (at byte 46)");
}

TEST(CompactShow, NumbersStandInTheirShortestFormAndRange) {
  const std::string form = "expected a variable-length integer in its shortest form";
  EXPECT_EQ(PatchedError(kCompact, 11, 2, "E08300"), "song \"2b\", division: " + form + " (at byte 21)");
  EXPECT_EQ(PatchedError(kCompact, 11, 2, "FFFFFFFFFF01"),
            "song \"2b\", division: " + form + " (at byte 21)");
  EXPECT_EQ(PatchedError(kCompact, 11, 2, "808004"),
            "song \"2b\", division: 65536 is above the maximum, 65535 (at byte 21)");
  EXPECT_EQ(PatchedError(kCompact, 13, 2, "8080808010"),
            "song \"2b\", songLength: 4294967296 is above the maximum, 4294967295 (at byte 23)");
  EXPECT_EQ(PatchedError(kCompact, 80, 1, "80"),
            "song \"2b\", voice 300, messages: " + form + " (at byte 90)");
}

TEST(CompactShow, MessagesAreCheckedOneByOne) {
  EXPECT_EQ(PatchedError(kCompact, 68, 2, "C18700"),
            "song \"2b\", voice 1, messages[1].time: expected a variable-length integer in its shortest form "
            "(at byte 78)");
  EXPECT_EQ(PatchedError(kCompact, 68, 2, "8080808020"),
            "song \"2b\", voice 1, messages[1].time: the difference in time is above the maximum, 4294967295 "
            "(at byte 78)");
  EXPECT_EQ(PatchedError(kCompact, 80, 1, "01 00 90 3C"),
            "song \"2b\", voice 300, messages[0].data: the message is cut off (at byte 92)");
}

TEST(BinaryShow, FieldThatIsCutOffIsNamed) {
  const std::string body = BodyOf(SampleShowFile(kFixed));
  EXPECT_EQ(BodyError(kFixed, body.substr(0, 2)), "showName: needs 4 bytes, only 2 remain (at byte 10)");
  EXPECT_EQ(BodyError(kFixed, body + "x"), "end: unexpected bytes after the last field: 1 (at byte 179)");
  EXPECT_EQ(BodyError(kCompact, BodyOf(SampleShowFile(kCompact)) + "xy"),
            "end: unexpected bytes after the last field: 2 (at byte 91)");
}

/// The error of the sample with its song twice.
std::string TwoSongsError(cmn::FileVersion version, std::size_t count_at, std::size_t song_at) {
  std::string body = BodyOf(SampleShowFile(version));
  const std::string song = body.substr(song_at);
  body[count_at] = 2;
  return BodyError(version, body + song);
}

TEST(BinaryShow, NothingVanishesInASecondSongOfTheSameNumber) {
  EXPECT_EQ(TwoSongsError(kFixed, 7, 11),
            "song \"2b\", songNumber: the show has another song of the same number (at byte 337)");
  EXPECT_EQ(TwoSongsError(kCompact, 4, 5),
            "song \"2b\", songNumber: the show has another song of the same number (at byte 167)");
}

TEST(BinaryShow, NothingVanishesInASecondVoiceOfTheSameNumber) {
  EXPECT_EQ(PatchedError(kFixed, 157, 2, "0100"),
            "song \"2b\", voice 1, trackNumber: the song has another voice of the same number (at byte 179)");
  EXPECT_EQ(PatchedError(kCompact, 76, 2, "01"),
            "song \"2b\", voice 1, trackNumber: the song has another voice of the same number (at byte 90)");
}

TEST(CompactShow, TimesMayRunBackwardsAndWrap) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  auto& messages = show.songs().begin()->second->voice_data->GetTrack(300)->messages;
  messages = {{0xFFFFFFFF, {0, 0, 0}}, {0, {0, 255, 255}}, {1, {255, 0, 0}}};
  const std::string bytes = zuna_test::Write(show, kCompact);
  EXPECT_EQ(BodyOf(bytes).substr(80), Hex("03"              // messages
                                          "FF FF FF FF 1F"  // time + 4294967295, status 0 as before the first
                                          "00 00"           // data
                                          "03  FF FF"       // time + 1 wraps to 0, same status, data
                                          "02  FF  00 00"));  // time + 1, another status, data
  EXPECT_EQ(zuna_test::Read<zuna_midi::ShowData>(bytes).songs().at("2b")->voice_data->GetTrack(300)->messages,
            messages);
}

}  // namespace
