#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "format_converter/version0/records/event_object.h"
#include "format_converter/version0/records/r_bars_beats.h"
#include "format_converter/version0/records/r_key.h"
#include "format_converter/version0/records/r_meter.h"
#include "format_converter/version0/records/r_page_num.h"
#include "format_converter/version0/records/r_tempo.h"
#include "format_converter/version0/records/x_caesura.h"
#include "format_converter/version0/records/x_score_marker.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/support/bytes.h"

namespace {

using namespace version0;  // NOLINT(google-build-using-namespace): the records are what all of this is about
using zuna_test::Bytes;
using zuna_test::MessageOf;
using zuna_test::Read;
using zuna_test::Written;

/// A record reads from its bytes, and writes them again.
template <typename Record>
void ExpectBytes(const Record& record, const std::string& bytes) {
  EXPECT_EQ(Written(record), bytes);
  EXPECT_EQ(Read<Record>(bytes), record);
  EXPECT_EQ(Written(Read<Record>(bytes)), bytes);
}

/// Two records that differ by something that counts, the first one earlier in time.
template <typename Record>
void ExpectOrder(const Record& earlier, const Record& later) {
  EXPECT_NE(earlier, later);
  EXPECT_LT(earlier, later);
  EXPECT_FALSE(later < earlier);
}

/// Two records that differ at the same time: neither comes first.
template <typename Record>
void ExpectDifferentAtOneTime(const Record& a, const Record& b) {
  EXPECT_NE(a, b);
  EXPECT_FALSE(a < b);
  EXPECT_FALSE(b < a);
}

TEST(RTempo, Bytes) {
  ExpectBytes(RTempo(480, 0.0009765625F, 12, 8, 300), Bytes({
                                                          'F',    // event code
                                                          12, 0,  // payload length: 4 + 4 + 1 + 1 + 2
                                                          0xE0, 0x01, 0x00, 0x00,  // time 480
                                                          0x00, 0x00, 0x80, 0x3A,  // seconds per tick 2^-10
                                                          12,                      // 32nds per click
                                                          8,                       // 32nds per quarter
                                                          0x2C, 0x01,              // 300 clicks a minute
                                                      }));
}

TEST(RTempo, Comparisons) {
  const RTempo tempo(480, 0.001F, 12, 8, 120);
  ExpectOrder(RTempo(479, 0.001F, 12, 8, 120), tempo);
  ExpectOrder(tempo, RTempo(0x80000000, 0.001F, 12, 8, 120));
  ExpectDifferentAtOneTime(tempo, RTempo(480, 0.001F, 11, 8, 120));
  ExpectDifferentAtOneTime(tempo, RTempo(480, 0.001F, 12, 7, 120));
  ExpectDifferentAtOneTime(tempo, RTempo(480, 0.001F, 12, 8, 121));
}

TEST(RTempo, SecondsPerTickAreEqualWithinSinglePrecision) {
  const auto with = [](float seconds) { return RTempo(0, seconds, 8, 8, 120); };
  EXPECT_EQ(with(0.001F), with(0.001F + 1e-8F));
  EXPECT_NE(with(0.001F), with(0.001F + 1e-6F));
  EXPECT_NE(with(1.0F), with(1.0F + 0x1p-23F)) << "a difference of exactly 2^-23 counts";
  EXPECT_EQ(with(0.5F), with(0.5F + 0x1p-24F));
}

TEST(RTempo, ClocksPerClick) {
  const auto clocks = [](int per_click, int per_quarter) {
    return RTempo(0, 0, static_cast<std::uint8_t>(per_click), static_cast<std::uint8_t>(per_quarter), 0)
        .clocks_per_click();
  };
  EXPECT_EQ(clocks(12, 8), 36);
  EXPECT_EQ(clocks(3, 8), 9);
  EXPECT_EQ(clocks(1, 3), 8);
  EXPECT_EQ(clocks(2, 3), 16);
  EXPECT_EQ(clocks(1, 16), 2) << "1.5 rounds away from zero";
  EXPECT_EQ(clocks(255, 1), 6120 % 256);
  EXPECT_EQ(clocks(12, 0), 0);
  EXPECT_EQ(clocks(0, 0), 0);
}

TEST(RTempo, Microseconds) {
  const auto microseconds = [](float seconds, unsigned short ticks) {
    return RTempo(0, seconds, 8, 8, 120).microseconds(ticks);
  };
  EXPECT_EQ(microseconds(0.0009765625F, 512), 500000);
  EXPECT_EQ(microseconds(static_cast<float>(0.545455 / 480), 480), 545455);
  EXPECT_EQ(microseconds(0x1p-7F, 1), 7813) << "7812.5 rounds away from zero";
  EXPECT_EQ(microseconds(-0x1p-7F, 1), -7813);
  EXPECT_EQ(microseconds(68750.015625F, 65535), 4505532273984375)
      << "beyond 2^52, where adding one half itself would step to the next even number";
  EXPECT_EQ(microseconds(1e9F, 65535), 0) << "6.5e19 does not fit into 64 bits";
  EXPECT_EQ(microseconds(std::numeric_limits<float>::quiet_NaN(), 480), 0);
  EXPECT_EQ(microseconds(std::numeric_limits<float>::infinity(), 480), 0);
}

TEST(RBarsBeats, Bytes) {
  ExpectBytes(RBarsBeats(480, "12a", 7), Bytes({
                                             'G',                     // event code
                                             9, 0,                    // payload length: 4 + 1 + 3 + 1
                                             0xE0, 0x01, 0x00, 0x00,  // time 480
                                             3, '1', '2', 'a',        // label
                                             7,                       // tag
                                         }));
}

TEST(RBarsBeats, WithoutALabelHasNineBytes) {
  ExpectBytes(RBarsBeats(1, "", 0), Bytes({'G', 6, 0, 1, 0, 0, 0, 0, 0}));
}

TEST(RBarsBeats, LabelOf256BytesIsRefusedAfterTheTime) {
  std::ostringstream os;
  const RBarsBeats longest(1, std::string(255, 'x'), 0);
  EXPECT_EQ(Read<RBarsBeats>(Written(longest)), longest);
  const RBarsBeats too_long(1, std::string(256, 'x'), 0);
  EXPECT_EQ(MessageOf<std::length_error>([&] { too_long.write_binary(os); }),
            "String length is limited to 256 characters");
  EXPECT_EQ(os.str(), Bytes({'G', 6, 1, 1, 0, 0, 0}));
}

TEST(RBarsBeats, Comparisons) {
  const RBarsBeats bar(480, "2", 1);
  ExpectOrder(bar, RBarsBeats(960, "1", 0));
  ExpectDifferentAtOneTime(bar, RBarsBeats(480, "3", 1));
  ExpectDifferentAtOneTime(bar, RBarsBeats(480, "2 ", 1));
  ExpectDifferentAtOneTime(bar, RBarsBeats(480, "2", 2));
}

TEST(RKey, Bytes) {
  ExpectBytes(RKey(480, -1, 1), Bytes({
                                    'H',                     // event code
                                    6, 0,                    // payload length: 4 + 1 + 1
                                    0xE0, 0x01, 0x00, 0x00,  // time 480
                                    0xFF,                    // key −1
                                    1,                       // mode
                                }));
  EXPECT_EQ(Read<RKey>(Written(RKey(480, -1, 255))).key, -1);
}

TEST(RKey, Comparisons) {
  ExpectOrder(RKey(0, 3, 0), RKey(480, 1, 0));
  ExpectDifferentAtOneTime(RKey(0, 3, 0), RKey(0, -3, 0));
  ExpectDifferentAtOneTime(RKey(0, 3, 0), RKey(0, 3, 1));
}

TEST(RPageNum, Bytes) {
  ExpectBytes(RPageNum(480, 258), Bytes({
                                      'I',                     // event code
                                      6, 0,                    // payload length: 4 + 2
                                      0xE0, 0x01, 0x00, 0x00,  // time 480
                                      0x02, 0x01,              // page 258
                                  }));
}

TEST(RPageNum, Comparisons) {
  ExpectOrder(RPageNum(0, 3), RPageNum(480, 1));
  ExpectDifferentAtOneTime(RPageNum(0, 3), RPageNum(0, 4));
}

TEST(RMeter, Bytes) {
  ExpectBytes(RMeter(1920, 3, 4), Bytes({
                                      'J',                     // event code
                                      6, 0,                    // payload length: 4 + 1 + 1
                                      0x80, 0x07, 0x00, 0x00,  // time 1920
                                      3,                       // numerator
                                      4,                       // denominator
                                  }));
}

TEST(RMeter, Comparisons) {
  ExpectOrder(RMeter(0, 4, 4), RMeter(480, 3, 4));
  ExpectDifferentAtOneTime(RMeter(0, 4, 4), RMeter(0, 3, 4));
  ExpectDifferentAtOneTime(RMeter(0, 4, 4), RMeter(0, 4, 8));
}

TEST(RMeter, PrintsDecimalNumbersAndLeavesTheStreamInDecimal) {
  std::ostringstream os;
  os << std::hex << std::boolalpha;
  RMeter(1920, 3, 4).write_string(os) << ' ' << 255 << true;
  EXPECT_EQ(os.str(), "RMeter(1920, 3, 4) 2551");
}

TEST(XScoreMarker, Bytes) {
  ExpectBytes(XScoreMarker(480, "Coda"), Bytes({
                                             0xE0, 0x01, 0x00, 0x00,  // time 480
                                             4, 'C', 'o', 'd', 'a',   // text
                                         }));
}

TEST(XScoreMarker, TextOf256BytesIsRefusedAfterTheTime) {
  std::ostringstream os;
  const XScoreMarker too_long(1, std::string(256, 'x'));
  EXPECT_EQ(MessageOf<std::length_error>([&] { too_long.write_binary(os); }),
            "String length is limited to 256 characters");
  EXPECT_EQ(os.str(), Bytes({1, 0, 0, 0}));
}

TEST(XScoreMarker, ComparesAndPrints) {
  ExpectOrder(XScoreMarker(0, "b"), XScoreMarker(480, "a"));
  ExpectDifferentAtOneTime(XScoreMarker(0, "b"), XScoreMarker(0, "a"));
  std::ostringstream os;
  os << std::hex;
  XScoreMarker(480, "to Coda").write_string(os);
  EXPECT_EQ(os.str(), "XScoreMarker(480, to Coda)");
}

TEST(XCaesura, Bytes) {
  ExpectBytes(XCaesura(480), Bytes({
                                 'N',                     // event code
                                 4, 0,                    // payload length
                                 0xE0, 0x01, 0x00, 0x00,  // time 480
                             }));
}

TEST(XCaesura, ComparesAndPrints) {
  ExpectOrder(XCaesura(0), XCaesura(480));
  std::ostringstream os;
  os << std::hex;
  XCaesura(480).write_string(os);
  EXPECT_EQ(os.str(), "XCaesura(480)");
}

TEST(Records, PrintNoLineEndAndNoFlush) {
  zuna_test::LineFlushes buffer;
  std::ostream os(&buffer);
  RMeter(0, 4, 4).write_string(os);
  XScoreMarker(0, "A").write_string(os);
  XCaesura(0).write_string(os);
  os << EventObject(0, 480, 0x90, 60, 100, 1);
  EXPECT_EQ(buffer.text(),
            "RMeter(0, 4, 4)XScoreMarker(0, A)XCaesura(0)EventObject(0, 480, 0x90, 60, 100, 1)");
  EXPECT_EQ(buffer.flushes(), 0);
}

TEST(Records, EventCodes) {
  EXPECT_EQ(std::string({char{RTempo::eventCode}, char{RBarsBeats::eventCode}, char{RKey::eventCode},
                         char{RPageNum::eventCode}, char{RMeter::eventCode}, char{XScoreMarker::eventCode},
                         char{XCaesura::eventCode}}),
            "FGHIJEN");
}

}  // namespace
