#include "toolkit/smf/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/smf/smf_bytes.h"

namespace zuna_toolkit::smf {
namespace {

using std_midi::VoiceMessage;
using testing::ElementsAre;
using testing::Pair;

std::string End() { return B("\x00\xFF\x2F\x00"); }

std::string ErrorOf(const std::string& bytes) {
  try {
    ReadText(bytes);
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

/// The error of a file with one track of this body.
std::string TrackErrorOf(const std::string& body) { return ErrorOf(Header(0, 1) + TrackChunk(body)); }

std::string Damaged() { return "; the file is damaged: export it again from the program that made it"; }

TEST(SmfReader, ReadsEveryFieldOfAFile) {
  const std::string bytes = Join({
      B("MThd"),                      // chunk type
      B("\x00\x00\x00\x06"),          // length
      B("\x00\x01"),                  // format 1
      B("\x00\x02"),                  // 2 tracks
      B("\x01\xE0"),                  // 480 ticks of a quarter note
      B("MTrk"),                      // chunk type
      B("\x00\x00\x00\x0B"),          // length
      B("\x00\xFF\x51\x03"),          // at 0: tempo, 3 bytes
      B("\x07\xA1\x20"),              // 500000 microseconds
      B("\x00\xFF\x2F\x00"),          // at 0: End of Track
      B("MTrk"),                      // chunk type
      B("\x00\x00\x00\x12"),          // length
      B("\x00\xC3\x05"),              // at 0: program change on channel 4
      B("\x83\x60\x93\x3C\x64"),      // at 480: note on
      B("\x01\x3C\x00"),              // at 481: the same status again
      B("\x81\x80\x00\xFF\x2F\x00"),  // at 16865: End of Track (too long for the length above)
  });
  EXPECT_THAT(ErrorOf(bytes), testing::StartsWith("truncated"));

  std::string right = bytes;
  right[right.find("\x12\x00\xC3")] = 0x11;
  const File file = ReadText(right);
  EXPECT_EQ(file.format, 1);
  EXPECT_EQ(file.division, 480);
  ASSERT_EQ(file.tracks.size(), 2U);
  EXPECT_THAT(file.tracks[0].metas, ElementsAre(MetaEvent{0, kTempo, B("\x07\xA1\x20")}));
  EXPECT_EQ(file.tracks[0].end, 0U);
  EXPECT_THAT(file.tracks[1].messages,
              ElementsAre(Pair(0, VoiceMessage(0xC3, 5, 0)), Pair(480, VoiceMessage(0x93, 60, 100)),
                          Pair(481, VoiceMessage(0x93, 60, 0))));
  EXPECT_EQ(file.tracks[1].end, 481U + 16384);
}

TEST(SmfReader, CountsSystemExclusiveMessages) {
  const std::string body = B("\x00\xF0\x02\x7E\xF7\x05\xF7\x01\x01") + End();
  const File file = ReadText(Header(0, 1) + TrackChunk(body));
  EXPECT_EQ(file.tracks[0].sysex_count, 2U);
  EXPECT_EQ(file.tracks[0].end, 5U);
}

TEST(SmfReader, AcceptsALongerHeader) {
  const std::string bytes = Join({
      B("MThd"),
      B("\x00\x00\x00\x08"),  // type, length
      B("\x00\x00"),
      B("\x00\x01"),
      B("\x00\x60"),  // format 0, 1 track, division 96
      B("\xAA\xBB"),  // what a later revision may add
      TrackChunk(End()),
  });
  EXPECT_EQ(ReadText(bytes).division, 96);
  EXPECT_EQ(ReadText(bytes).tracks.size(), 1U);
}

TEST(SmfReader, SkipsAndCountsUnknownChunks) {
  ReadNotes notes;
  const File file = ReadText(
      Header(0, 1) + B("XFIH\x00\x00\x00\x01?") + TrackChunk(End()) + B("XFKM\x00\x00\x00\x00"), notes);
  EXPECT_EQ(file.tracks.size(), 1U);
  EXPECT_EQ(notes.unknown_chunks, 2U);
}

TEST(SmfReader, ToleratesMoreTracksThanPromised) {
  ReadNotes notes;
  EXPECT_EQ(ReadText(Header(1, 1) + TrackChunk(End()) + TrackChunk(End()), notes).tracks.size(), 2U);
  EXPECT_EQ(notes.declared_tracks, 1U);
}

TEST(SmfReader, ToleratesAMissingEndOfTrack) {
  ReadNotes notes;
  const File file = ReadText(Header(0, 1) + TrackChunk(B("\x07\x90\x3C\x64")), notes);
  EXPECT_EQ(file.tracks[0].end, 7U);
  EXPECT_EQ(notes.missing_ends, 1U);
}

TEST(SmfReader, CountsBytesAfterTheEnd) {
  ReadNotes notes;
  ReadText(Header(0, 1) + TrackChunk(End() + "abc") + "tail", notes);
  EXPECT_EQ(notes.bytes_after_end, 3U);
  EXPECT_EQ(notes.bytes_after_last_chunk, 4U);
}

TEST(SmfReader, RefusesOtherFiles) {
  const std::string message =
      "not a Standard MIDI File: it does not begin with \"MThd\" (offset 0); give a .mid file";
  EXPECT_EQ(ErrorOf(""), message);
  EXPECT_EQ(ErrorOf("MTh"), message);
  EXPECT_EQ(ErrorOf("RIFF----RMID"), message);
}

TEST(SmfReader, RefusesFormat2) {
  EXPECT_EQ(ErrorOf(Header(2, 1)), "format 2 is not supported (offset 8); export the file as format 0 or 1");
}

TEST(SmfReader, RefusesDivisionsThatAreNotTicksOfAQuarterNote) {
  const std::string start = B("MThd\x00\x00\x00\x06\x00\x00\x00\x01");
  EXPECT_EQ(ErrorOf(start + B("\xE7\x28")),
            "times are in SMPTE frames (offset 12); export the file with ticks of a quarter note instead");
  EXPECT_EQ(ErrorOf(start + B("\x00\x00")),
            "a quarter note has 0 ticks (offset 12); export the file with another resolution");
}

TEST(SmfReader, RefusesAShortHeader) {
  EXPECT_EQ(ErrorOf(B("MThd\x00\x00\x00\x05\x00\x00\x00\x01\x01")),
            "the header has 5 bytes, not 6 (offset 8)" + Damaged());
}

TEST(SmfReader, RefusesTruncatedFiles) {
  EXPECT_EQ(ErrorOf(B("MThd\x00\x00")), "truncated: 1 bytes needed, 0 left (offset 6)" + Damaged());
  EXPECT_EQ(ErrorOf(Header(0, 1) + B("MTrk\xFF\xFF\xFF\xFF\x00")),
            "truncated: 4294967295 bytes needed, 1 left (offset 22)" + Damaged());
  EXPECT_EQ(ErrorOf(Header(1, 2) + TrackChunk(End()) + "MTr"),
            "truncated: the header promises 2 tracks, and the file has 1 (offset 26); get a complete copy of "
            "the file");
  EXPECT_EQ(ErrorOf(Header(1, 3) + TrackChunk(End())),
            "truncated: the header promises 3 tracks, and the file has 1 (offset 26); get a complete copy of "
            "the file");
}

TEST(SmfReader, RefusesDamagedTracks) {
  EXPECT_EQ(TrackErrorOf(B("\x81\x80\x80\x80\x00")),
            "a variable-length quantity has more than 4 bytes (offset 26)" + Damaged());
  EXPECT_EQ(TrackErrorOf(B("\x00\x3C\x64")),
            "a data byte stands where a status byte is expected (offset 23)" + Damaged());
  EXPECT_EQ(TrackErrorOf(B("\x00\x90\x3C\x80")),
            "a status byte stands where a data byte is expected (offset 25)" + Damaged());
  EXPECT_EQ(TrackErrorOf(B("\x00\xF8")), "status byte 248 cannot stand in a file (offset 23)" + Damaged());
  EXPECT_EQ(TrackErrorOf(B("\x00\x90\x3C")), "truncated: 1 bytes needed, 0 left (offset 25)" + Damaged());
  EXPECT_EQ(TrackErrorOf(B("\x00\xFF\x01\x05"
                           "ab")),
            "truncated: 5 bytes needed, 2 left (offset 26)" + Damaged());
}

TEST(SmfReader, CancelsRunningStatusAtMetaAndSystemExclusive) {
  const std::string message = "a data byte stands where a status byte is expected";
  EXPECT_THAT(TrackErrorOf(B("\x00\x90\x3C\x64\x00\xFF\x01\x00\x00\x3C\x00")), testing::StartsWith(message));
  EXPECT_THAT(TrackErrorOf(B("\x00\x90\x3C\x64\x00\xF0\x00\x00\x3C\x00")), testing::StartsWith(message));
}

TEST(SmfReader, RefusesTimesThatOverflow) {
  std::string body;
  for (int i = 0; i < 17; ++i) body += B("\xFF\xFF\xFF\x7F\xC0\x00");
  EXPECT_EQ(TrackErrorOf(body), "the time is beyond 4294967295 ticks (offset " +
                                    std::to_string(22 + 16 * 6 + 4) + ")" + Damaged());
}

TEST(SmfReader, SurvivesEveryTruncationAndEveryChangedByte) {
  const std::string good = Header(1, 2) +
                           TrackChunk(B("\x00\xFF\x58\x04\x03\x02\x18\x08\x81\x00\xFF\x2F\x00")) +
                           TrackChunk(B("\x00\x90\x3C\x64\x60\x3C\x00\x00\xF0\x01\xF7\x00\xFF\x2F\x00"));
  EXPECT_EQ(ErrorOf(good), "(no error)");
  for (std::size_t size = 0; size < good.size(); ++size) {
    EXPECT_NE(ErrorOf(good.substr(0, size)), "(no error)") << size;
  }
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (int value = 0; value < 256; ++value) {
      std::string changed = good;
      changed[at] = static_cast<char>(value);
      const std::string error = ErrorOf(changed);
      EXPECT_TRUE(error == "(no error)" || error.find("(offset ") != std::string::npos) << error;
    }
  }
}

}  // namespace
}  // namespace zuna_toolkit::smf
