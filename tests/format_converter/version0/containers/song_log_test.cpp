#include "format_converter/version0/containers/song_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "format_converter/version0/primitives/errors.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/format_converter/support/positions.h"
#include "tests/support/bytes.h"

namespace {

using version0::CutV0;
using version0::EventCodeError;
using version0::SongLogV0;
using zuna_test::Bytes;
using zuna_test::MessageOf;
using zuna_test::Read;
using zuna_test::Written;

/// The front of a record whose sequences have `stated` + 4 bytes: number "7", no name, length 0.
std::string Front(int stated) { return Bytes({stated, 0, 0, 0, 1, '7', 0, 0, 0, 0, 0}); }

const std::string kCutSequence = Bytes({
    'B', 12, 0, 0, 0,  // sequence: one record
    'B', 9, 0,         // frame
    0, 0, 0, 0,        // start
    224, 1, 0, 0,      // end 480
    0xFF,              // value -1
});

const std::string kMarkerSequence = Bytes({
    'E', 6, 0, 0, 0,  // sequence: one record
    16, 0, 0, 0,      // time
    1, 'A',           // text
});

SongLogV0 WithEveryList() {
  SongLogV0 log;
  log.songNumber_ = "12a";
  log.songName_ = "Tune";
  log.songLength_ = 7680;
  log.cuts = {{0, 480, -1}};
  log.vamps = {{480, 960, 2}, {960, 1440, 3}};
  log.repeats = {{0, 1920, 4}};
  log.clicks = {{1, 2, 127}};
  log.tempo_scales = {{0, 7680, 1.5F}};
  log.transposes = {{0, 480, -12}};
  log.caesuras = {version0::XCaesura(960)};
  log.score_markers = {{16, "A"}};
  return log;
}

TEST(SongLogV0, Bytes) {
  const std::string front = Bytes({
      136, 0, 0, 0,           // record length: 17 + 29 + 17 + 17 + 20 + 17 + 12 + 11 - 4
      3, '1', '2', 'a',       // number
      4, 'T', 'u', 'n', 'e',  // name
      0x00, 0x1E, 0, 0,       // length 7680
  });
  const std::string sequences = kCutSequence +
                                Bytes({
                                    '@',  24,   0,    0,    0,  // vamps: two records
                                    '@',  9,    0,              // frame
                                    0xE0, 1,    0,    0,        // start 480
                                    0xC0, 3,    0,    0,        // end 960
                                    2,                          // value
                                    '@',  9,    0,              // frame
                                    0xC0, 3,    0,    0,        // start 960
                                    0xA0, 5,    0,    0,        // end 1440
                                    3,                          // value
                                    'A',  12,   0,    0,    0,  // repeats
                                    'A',  9,    0,              // frame
                                    0,    0,    0,    0,        // start
                                    0x80, 7,    0,    0,        // end 1920
                                    4,                          // value
                                    'L',  12,   0,    0,    0,  // clicks
                                    'L',  9,    0,              // frame
                                    1,    0,    0,    0,        // start
                                    2,    0,    0,    0,        // end
                                    127,                        // value
                                    'D',  15,   0,    0,    0,  // tempo scales
                                    'D',  12,   0,              // frame
                                    0,    0,    0,    0,        // start
                                    0x00, 0x1E, 0,    0,        // end 7680
                                    0,    0,    0xC0, 0x3F,     // value 1.5
                                    'C',  12,   0,    0,    0,  // transposes
                                    'C',  9,    0,              // frame
                                    0,    0,    0,    0,        // start
                                    0xE0, 1,    0,    0,        // end 480
                                    0xF4,                       // value -12
                                    'N',  7,    0,    0,    0,  // caesuras
                                    'N',  4,    0,              // frame
                                    0xC0, 3,    0,    0,        // time 960
                                }) +
                                kMarkerSequence;
  const std::string expected = front + sequences;
  EXPECT_EQ(Written(WithEveryList()), expected);
  const auto log = Read<SongLogV0>(expected);
  EXPECT_EQ(Written(log), expected);
  EXPECT_EQ(log.cuts.at(0).value, -1);
  EXPECT_EQ(log.cuts.at(0).event_code, 'B');
  EXPECT_EQ(log.tempo_scales.at(0).value, 1.5F);
}

TEST(SongLogV0, WithoutEventsHasEightEmptySequences) {
  SongLogV0 log;
  log.songNumber_ = "7";
  const std::string bytes = Front(36) + Bytes({
                                            'B', 0, 0, 0, 0,  // cuts
                                            '@', 0, 0, 0, 0,  // vamps
                                            'A', 0, 0, 0, 0,  // repeats
                                            'L', 0, 0, 0, 0,  // clicks
                                            'D', 0, 0, 0, 0,  // tempo scales
                                            'C', 0, 0, 0, 0,  // transposes
                                            'N', 0, 0, 0, 0,  // caesuras
                                            'E', 0, 0, 0, 0,  // score markers
                                        });
  EXPECT_EQ(Written(log), bytes);
  EXPECT_EQ(Written(Read<SongLogV0>(bytes)), bytes);
}

TEST(SongLogV0, ReadsSequencesInAnyOrderAndKeepsTheLaterOfTwo) {
  const std::string later = Bytes({'B', 12, 0, 0, 0, 'B', 9, 0, 5, 0, 0, 0, 6, 0, 0, 0, 7});
  const std::string sequences = kMarkerSequence + kCutSequence + later;
  const auto log = Read<SongLogV0>(Front(static_cast<int>(sequences.size()) - 4) + sequences);
  ASSERT_EQ(log.cuts.size(), 1U);
  EXPECT_EQ(log.cuts[0].start, 5U);
  EXPECT_EQ(log.score_markers.at(0).text, "A");
}

TEST(SongLogV0, AlwaysReadsOneSequence) {
  std::istringstream is(Front(0) + kCutSequence + kMarkerSequence);
  const SongLogV0 log(is);
  EXPECT_EQ(log.cuts.size(), 1U);
  EXPECT_TRUE(log.score_markers.empty());
  EXPECT_EQ(is.tellg(), static_cast<std::streamoff>(Front(0).size() + kCutSequence.size()));
}

TEST(SongLogV0, RecordLengthIsHeldAgainstWhatHasBeenRead) {
  // 17 bytes of cuts are read: a record length of 17 is reached by them, one of 18 is not.
  const auto markers = [](int stated) {
    return Read<SongLogV0>(Front(stated) + kCutSequence + kMarkerSequence).score_markers.size();
  };
  EXPECT_EQ(markers(17), 0U);
  EXPECT_EQ(markers(18), 1U);
}

TEST(SongLogV0, IgnoresThePayloadLengthOfARecord) {
  std::string sequence = kCutSequence;
  sequence[6] = 77;
  EXPECT_EQ(Read<SongLogV0>(Front(13) + sequence).cuts.at(0).end, 480U);
}

TEST(SongLogV0, NamesAByteThatStartsNoSequence) {
  EXPECT_EQ(MessageOf<EventCodeError>([] { Read<SongLogV0>(Front(1) + "F"); }),
            "Unknown SongLogV0 eventCode 0x46 at 11");
  EXPECT_EQ(MessageOf<EventCodeError>([] { Read<SongLogV0>(Front(99) + kCutSequence + "x"); }),
            "Unknown SongLogV0 eventCode 0x78 at 28");
}

TEST(SongLogV0, TakingThePositionAtTheEndIsAFailure) {
  // A song log that ends where a sequence must stand: the reader has set the mask.
  EXPECT_THROW(Read<SongLogV0>(Front(99) + kCutSequence), std::ios_base::failure);
  EXPECT_THROW(Read<SongLogV0>(Front(99)), std::ios_base::failure);
}

TEST(SongLogV0, PositionThatCannotBeTakenInItsLoopIsAFailure) {
  // Unlike a sequence or a timeline, a song log does not end quietly there. The positions: at the first
  // sequence, in it, behind its record, then the one of the loop.
  zuna_test::NoPositionAfter buffer(Front(99) + kCutSequence + kMarkerSequence, 3);
  std::istream is(&buffer);
  EXPECT_EQ(MessageOf<std::ios_base::failure>([&] { SongLogV0 log(is); }),
            std::ios_base::failure("no position").what());
}

TEST(SongLogV0, NamesARecordOfAnotherSequence) {
  std::string sequence = kCutSequence;
  sequence[5] = '@';
  EXPECT_EQ(MessageOf<EventCodeError>([&] { Read<SongLogV0>(Front(13) + sequence); }),
            "Expected 0x42, found 0x40 before 17");
}

TEST(SongLogV0, EveryTruncationIsRefused) {
  const std::string bytes = Written(WithEveryList());
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    try {
      Read<SongLogV0>(bytes.substr(0, length));
      // The record length is 4 short, and the last sequence ends quietly after a complete record.
      ADD_FAILURE() << "read " << length << " of " << bytes.size() << " bytes";
    } catch (const std::ios_base::failure&) {
    }
  }
}

TEST(SongLogV0, SetsTheExceptionMask) {
  std::istringstream is(Written(WithEveryList()));
  const SongLogV0 log(is);
  EXPECT_EQ(is.exceptions(), std::ios_base::failbit | std::ios_base::badbit);
}

TEST(SongLogV0, RefusesToWriteATextOf256Bytes) {
  for (std::string SongLogV0::*const text : {&SongLogV0::songNumber_, &SongLogV0::songName_}) {
    SongLogV0 log;
    log.*text = std::string(255, 'x');
    EXPECT_EQ(Read<SongLogV0>(Written(log)).*text, log.*text);
    log.*text += 'x';
    EXPECT_EQ(MessageOf<std::length_error>([&] { Written(log); }),
              "String length is limited to 256 characters");
  }
  SongLogV0 log;
  log.score_markers = {{0, std::string(256, 'x')}};
  EXPECT_THROW(Written(log), std::length_error);
}

TEST(SongLogV0, WritesAtThePositionOfTheStream) {
  std::ostringstream os;
  os << "before";
  WithEveryList().write_binary(os);
  os << "after";
  EXPECT_EQ(os.str(), "before" + Written(WithEveryList()) + "after");
}

TEST(SongLogV0, SummaryIsOneLineWithoutItsEnd) {
  zuna_test::LineFlushes buffer;
  std::ostream os(&buffer);
  os << std::hex;
  EXPECT_EQ(&WithEveryList().write_string(os), &os);
  EXPECT_EQ(buffer.flushes(), 0);
  EXPECT_EQ(buffer.text(), "SongLogV0(songNumber_=12a, songName_=Tune, songLength_=7680)");
}

TEST(SongLogV0, DetailedTextHasABlockForEachList) {
  zuna_test::LineFlushes buffer;
  std::ostream os(&buffer);
  os << std::hex;
  WithEveryList().write_string_detailed(os, 1);
  EXPECT_EQ(buffer.unflushed_lines(), 0);
  EXPECT_EQ(buffer.text(),
            "\tSongLogV0(songNumber_=12a, songName_=Tune, songLength_=7680)\n"
            "\t\tVampSequence(evt_count=2):\n"
            "\t\t\tVamp(480, 960, 2)\n"
            "\t\t\tVamp(960, 1440, 3)\n"
            "\t\tRepeatSequence(evt_count=1):\n"
            "\t\t\tRepeat(0, 1920, 4)\n"
            "\t\tCutSequence(evt_count=1):\n"
            "\t\t\tCut(0, 480, -1)\n"
            "\t\tTransposeSequence(evt_count=1):\n"
            "\t\t\tTranspose(0, 480, -12)\n"
            "\t\tTempoScaleSequence(evt_count=1):\n"
            "\t\t\tTempoScale(0, 7680, 1)\n"
            "\t\tMarkerSequence(evt_count=1):\n"
            "\t\t\tXScoreMarker(16, A)\n"
            "\t\tClickSequence(evt_count=1):\n"
            "\t\t\tClick(1, 2, 127)\n"
            "\t\tCaesuraSequence(evt_count=1):\n"
            "\t\t\tXCaesura(960)\n");
}

TEST(SongLogV0, PrintsTempoScalesAsSigned16BitNumbers) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  SongLogV0 log;
  const std::pair<float, const char*> values[] = {
      {-2.75F, "-2"},           // truncated toward zero
      {0.99F, "0"},             //
      {32767.5F, "32767"},      // the greatest that 16 bits hold
      {32768.0F, "-32768"},     // from here on the low 16 bits
      {40000.0F, "-25536"},     //
      {-32769.0F, "32767"},     //
      {65537.0F, "1"},          //
      {2147483520.0F, "-128"},  // the greatest that 32 bits hold
      {2147483648.0F, "0"},     // what 32 bits cannot hold
      {-2147483648.0F, "0"},    // low 16 bits of what 32 bits do hold
      {-2147418112.0F, "0"},    // likewise: 0x80010000
      {-2147417984.0F, "128"},  // 0x80010080
      {-2147483904.0F, "0"},    // -2^31 - 256, whose low 16 bits would print as -256
      {1e30F, "0"},             //
      {kInfinity, "0"},         //
      {-kInfinity, "0"},        //
      {std::numeric_limits<float>::quiet_NaN(), "0"},
  };
  std::string expected = "\tTempoScaleSequence(evt_count=17):\n";
  for (const auto& [value, text] : values) {
    log.tempo_scales.emplace_back(0U, 0U, value);
    expected.append("\t\tTempoScale(0, 0, ").append(text).append(")\n");
  }
  std::ostringstream os;
  log.write_string_detailed(os, 0);
  EXPECT_THAT(os.str(), testing::HasSubstr(expected));
}

TEST(SongLogV0, ValuesDoNotCountInComparisons) {
  SongLogV0 other = WithEveryList();
  other.cuts[0].value = 5;
  other.tempo_scales[0].value = 0.5F;
  EXPECT_TRUE(WithEveryList() == other);
  EXPECT_FALSE(WithEveryList() != other);
}

TEST(SongLogV0, EverythingElseCounts) {
  const auto differs = [](auto change) {
    SongLogV0 other = WithEveryList();
    change(other);
    return WithEveryList() != other && other != WithEveryList();
  };
  EXPECT_TRUE(differs([](SongLogV0& log) { log.songNumber_ = "12b"; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.songName_ = "tune"; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.songLength_ = 1; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.cuts[0].start = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.cuts[0].end = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.vamps[1].start = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.repeats[0].end = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.clicks[0].start = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.tempo_scales[0].end = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.transposes[0].start = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.caesuras[0].time = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.score_markers[0].time = 9; }));
  EXPECT_TRUE(differs([](SongLogV0& log) { log.score_markers[0].text = "B"; }));
}

TEST(SongLogV0, ComparisonWalksTheLeftListsOnly) {
  const auto longer_is_equal = [](auto add) {
    SongLogV0 longer = WithEveryList();
    add(longer);
    return WithEveryList() == longer && longer != WithEveryList();
  };
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.cuts.emplace_back(1U, 2U, std::int8_t{3}); }));
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.vamps.emplace_back(1U, 2U, std::int8_t{3}); }));
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.repeats.emplace_back(1U, 2U, std::int8_t{3}); }));
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.clicks.emplace_back(1U, 2U, std::int8_t{3}); }));
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.tempo_scales.emplace_back(1U, 2U, 3.0F); }));
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.transposes.emplace_back(1U, 2U, std::int8_t{3}); }));
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.caesuras.emplace_back(1U); }));
  EXPECT_TRUE(longer_is_equal([](SongLogV0& log) { log.score_markers.emplace_back(1U, "B"); }));
}

TEST(LegacyPairedEvent, EventCodesAndPayloadLengths) {
  EXPECT_EQ(version0::VampV0::eventCode, '@');
  EXPECT_EQ(version0::RepeatV0::eventCode, 'A');
  EXPECT_EQ(version0::CutV0::eventCode, 'B');
  EXPECT_EQ(version0::TransposeV0::eventCode, 'C');
  EXPECT_EQ(version0::TempoScaleV0::eventCode, 'D');
  EXPECT_EQ(version0::ClickV0::eventCode, 'L');
  EXPECT_EQ(CutV0::kPayloadLength, 9);
  EXPECT_EQ(version0::TempoScaleV0::kPayloadLength, 12);
}

}  // namespace
