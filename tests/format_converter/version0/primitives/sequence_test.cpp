#include "format_converter/version0/primitives/internal/sequence.h"

#include <gtest/gtest.h>

#include <bit>
#include <sstream>

#include "format_converter/version0/records/paired_event.h"
#include "format_converter/version0/records/r_page_num.h"
#include "format_converter/version0/records/r_tempo.h"
#include "format_converter/version0/records/x_caesura.h"
#include "format_converter/version0/records/x_score_marker.h"
#include "tests/format_converter/support/positions.h"
#include "tests/support/bytes.h"

namespace {

using version0::RPageNum;
using version0::XCaesura;
using zuna_test::Bytes;
using zuna_test::MessageOf;

const std::string kTwoPages = Bytes({
    'I',               // event code of the sequence
    18,   0,    0, 0,  // body length: 2 × (1 + 2 + 6)
    'I',  6,    0,     // frame
    0x00, 0x00, 0, 0,  // time 0
    1,    0,           // page 1
    'I',  6,    0,     // frame
    0xE0, 0x01, 0, 0,  // time 480
    2,    0,           // page 2
});

TEST(Sequence, ReadsAndWritesItsRecords) {
  std::istringstream is(kTwoPages);
  const auto pages = version0::read_sequence<RPageNum>(is);
  ASSERT_EQ(pages.size(), 2U);
  EXPECT_EQ(pages[1], RPageNum(480, 2));
  std::ostringstream os;
  version0::write_sequence(os, pages);
  EXPECT_EQ(os.str(), kTwoPages);
}

TEST(Sequence, WithoutRecordsIsItsCodeAndAZeroLength) {
  std::ostringstream os;
  version0::write_sequence(os, std::vector<RPageNum>());
  EXPECT_EQ(os.str(), Bytes({'I', 0, 0, 0, 0}));
  std::istringstream is(os.str() + "I");
  EXPECT_TRUE(version0::read_sequence<RPageNum>(is).empty());
  EXPECT_EQ(is.tellg(), 5);
}

TEST(Sequence, NamesTheCodeThatItExpectedAndTheOneThatItFound) {
  std::istringstream is("abG");
  is.seekg(2);
  EXPECT_EQ(MessageOf<version0::EventCodeError>([&] { version0::read_sequence<version0::RTempo>(is); }),
            "Expected 0x46, found 0x47 before 3");
}

TEST(Sequence, NamesAMissingCode) {
  std::istringstream is("");
  EXPECT_EQ(MessageOf<version0::EventCodeError>([&] { version0::read_sequence<RPageNum>(is); }),
            "Expected 0x49, found 0xffffffff before 4294967295");
}

TEST(Sequence, PrintsAZeroCodeWithoutPrefix) {
  std::istringstream is(Bytes({0}));
  EXPECT_EQ(MessageOf<version0::EventCodeError>([&] { version0::read_sequence<RPageNum>(is); }),
            "Expected 0x49, found 0 before 1");
}

TEST(Sequence, KeepsTheCodeAndLengthOfEachRecordAsTheyStand) {
  std::istringstream is(Bytes({'I', 9, 0, 0, 0, 'x', 99, 1, 5, 0, 0, 0, 7, 0}));
  const auto pages = version0::read_sequence<RPageNum>(is);
  ASSERT_EQ(pages.size(), 1U);
  EXPECT_EQ(pages[0].event_code, 'x');
  EXPECT_EQ(pages[0].length, 99 + 256);
  EXPECT_EQ(pages[0], RPageNum(5, 7)) << "the frame does not take part in comparisons";
  EXPECT_EQ(zuna_test::Written(pages[0]), Bytes({'I', 6, 0, 5, 0, 0, 0, 7, 0})) << "nor is it written";
}

TEST(Sequence, ReadsAWholeRecordAcrossTheStatedEnd) {
  std::istringstream is(Bytes({'N', 1, 0, 0, 0, 'N', 4, 0, 1, 0, 0, 0, 'N', 4, 0, 2, 0, 0, 0}));
  EXPECT_EQ(version0::read_sequence<XCaesura>(is).size(), 1U);
  EXPECT_EQ(is.tellg(), 12);
}

TEST(Sequence, EndIsCountedIn32Bits) {
  // The body begins at 5, and 5 + 0xFFFFFFFF is 4: already behind, so that one record is read.
  std::istringstream is(Bytes({'N', 0xFF, 0xFF, 0xFF, 0xFF, 'N', 4, 0, 1, 0, 0, 0, 'N', 4, 0, 2, 0, 0, 0}));
  EXPECT_EQ(version0::read_sequence<XCaesura>(is).size(), 1U);
  EXPECT_EQ(is.tellg(), 12);
}

TEST(Sequence, StopsWhereAClearStreamFails) {
  // The length is 0xF0FFFFFF; two records are there, and a part of a third, which keeps what was delivered.
  std::istringstream is(
      Bytes({'N', 0xFF, 0xFF, 0xFF, 0xF0, 'N', 4, 0, 1, 0, 0, 0, 'N', 4, 0, 2, 0, 0, 0, 'N', 4, 0, 3}));
  const auto caesuras = version0::read_sequence<XCaesura>(is);
  ASSERT_EQ(caesuras.size(), 3U);
  EXPECT_EQ(caesuras[2].time, 3U);
  EXPECT_TRUE(is.fail());
}

TEST(Sequence, ShortPairedEventKeepsWhatWasDelivered) {
  std::istringstream in_end(Bytes({'@', 9, 0, 1, 2, 0, 0, 3, 4}));
  const version0::VampV0 vamp(in_end);
  EXPECT_EQ(vamp.start, 0x201U);
  EXPECT_EQ(vamp.end, 0x403U);
  EXPECT_EQ(vamp.value, -1) << "as any byte that is not there";
  EXPECT_TRUE(in_end.fail());
  std::istringstream in_value(Bytes({'D', 12, 0, 1, 0, 0, 0, 2, 0, 0, 0, 5, 6}));
  const version0::TempoScaleV0 scale(in_value);
  EXPECT_EQ(scale.end, 2U);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(scale.value), 0x605U);
  EXPECT_TRUE(in_value.fail());
}

TEST(Sequence, ShortRecordOnAThrowingStreamIsItsFailure) {
  std::istringstream is(Bytes({'N', 99, 0, 0, 0, 'N', 4, 0, 1, 0}));
  is.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  EXPECT_THROW(version0::read_sequence<XCaesura>(is), std::ios_base::failure);
}

TEST(Sequence, EndsQuietlyWhereThePositionCannotBeTaken) {
  zuna_test::NoPositionAfter buffer(Bytes({'N', 14, 0, 0, 0, 'N', 4, 0, 1, 0, 0, 0, 'N', 4, 0, 2, 0, 0, 0}),
                                    1);
  std::istream is(&buffer);
  is.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  EXPECT_EQ(version0::read_sequence<XCaesura>(is).size(), 1U);
}

TEST(Sequence, ScoreMarkersHaveNoFrame) {
  std::ostringstream os;
  version0::write_sequence(os, std::vector<version0::XScoreMarker>{{480, "Coda"}});
  EXPECT_EQ(os.str(), Bytes({'E', 9, 0, 0, 0, 0xE0, 0x01, 0, 0, 4, 'C', 'o', 'd', 'a'}));
  std::istringstream is(os.str());
  EXPECT_EQ(version0::read_sequence<version0::XScoreMarker>(is).at(0), version0::XScoreMarker(480, "Coda"));
}

}  // namespace
