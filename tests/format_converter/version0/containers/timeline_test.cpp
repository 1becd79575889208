#include "format_converter/version0/containers/timeline.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

#include "format_converter/version0/primitives/errors.h"
#include "tests/format_converter/support/positions.h"
#include "tests/support/bytes.h"

namespace {

using version0::Timeline;
using zuna_test::Bytes;
using zuna_test::MessageOf;
using zuna_test::Read;
using zuna_test::Written;

const std::string kEmptyLists = Bytes({
    'F', 0, 0, 0, 0,  // tempos
    'G', 0, 0, 0, 0,  // bars and beats
    'H', 0, 0, 0, 0,  // keys
    'I', 0, 0, 0, 0,  // page numbers
    'J', 0, 0, 0, 0,  // meters
});

const std::string kTempoSequence = Bytes({
    'F', 15, 0,    0,    0,  // sequence
    'F', 12, 0,              // frame
    0,   0,  0,    0,        // time
    0,   0,  0x80, 0x3A,     // seconds per tick
    8,   8,                  // 32nds per click, per quarter
    120, 0,                  // clicks a minute
});

/// A timeline without name or length, with this body, and `stated` as its length.
std::string WithBody(const std::string& body, int stated) {
  return "TLMN" + Bytes({0, 0, 0, 0, 0, stated, 0, 0, 0}) + body;
}

std::string WithBody(const std::string& body) { return WithBody(body, static_cast<int>(body.size())); }

Timeline WithEveryList() {
  Timeline timeline;
  timeline.name = "12a";
  timeline.song_length = 7680;
  timeline.tempos = {{0, 0.0009765625F, 8, 8, 120}};
  timeline.bars_beats = {{0, "1", 0}, {1920, "2", 1}};
  timeline.keys = {{0, -1, 1}};
  timeline.page_nums = {{0, 1}};
  timeline.meters = {{0, 4, 4}};
  return timeline;
}

TEST(LegacyTimeline, Bytes) {
  const std::string bytes = Bytes({
      'T',  'L',  'M', 'N',      // magic
      3,    '1',  '2', 'a',      // name
      0x00, 0x1E, 0,   0,        // song length 7680
      87,   0,    0,   0,        // body length: 20 + 25 + 14 + 14 + 14
      'F',  15,   0,   0,    0,  // tempos
      'F',  12,   0,   0,    0,    0,   0, 0, 0,   0x80, 0x3A, 8, 8,    120, 0,  // the tempo
      'G',  20,   0,   0,    0,                                                  // bars and beats
      'G',  7,    0,   0,    0,    0,   0, 1, '1', 0,                            // bar 1
      'G',  7,    0,   0x80, 0x07, 0,   0, 1, '2', 1,                            // bar 2
      'H',  9,    0,   0,    0,    'H', 6, 0, 0,   0,    0,    0, 0xFF, 1,       // keys
      'I',  9,    0,   0,    0,    'I', 6, 0, 0,   0,    0,    0, 1,    0,       // page numbers
      'J',  9,    0,   0,    0,    'J', 6, 0, 0,   0,    0,    0, 4,    4,       // meters
  });
  EXPECT_EQ(Written(WithEveryList()), bytes);
  EXPECT_EQ(Written(Read<Timeline>(bytes)), bytes);
}

TEST(LegacyTimeline, WithFiveEmptyListsHasThirtyEightBytesAndItsName) {
  Timeline timeline;
  timeline.name = "Tune";
  const std::string bytes = Written(timeline);
  EXPECT_EQ(bytes.size(), 4U + 1 + 4 + 4 + 4 + 25);
  EXPECT_EQ(bytes, "TLMN" + Bytes({4, 'T', 'u', 'n', 'e', 0, 0, 0, 0, 25, 0, 0, 0}) + kEmptyLists);
  EXPECT_EQ(Read<Timeline>(bytes), timeline);
  EXPECT_EQ(timeline, Read<Timeline>(bytes));
}

TEST(LegacyTimeline, NamesTheBytesThatAreNotItsMagic) {
  EXPECT_EQ(MessageOf<version0::IDError>([] { Read<Timeline>("TLMX"); }),
            "Version0 Timeline must begin with \"TLMN\". Begins with: TLMX");
}

TEST(LegacyTimeline, NamesAnUnknownEventCodeAndItsPlace) {
  EXPECT_EQ(MessageOf<version0::EventCodeError>([] { Read<Timeline>(WithBody("E")); }),
            "Unknown Timeline eventCode 0x45 at 13");
  EXPECT_EQ(MessageOf<version0::EventCodeError>([] { Read<Timeline>(WithBody(kEmptyLists + "K")); }),
            "Unknown Timeline eventCode 0x4b at 38");
}

TEST(LegacyTimeline, EndOfTheStreamIsAnUnknownCodeWhereTheStreamDoesNotThrow) {
  // Asked for its position at its end, a stream fails: -1 without an exception mask, its failure with one.
  EXPECT_EQ(MessageOf<version0::EventCodeError>([] { Read<Timeline>(WithBody("")); }),
            "Unknown Timeline eventCode 0xffffffff at -1");
  EXPECT_EQ(MessageOf<version0::EventCodeError>([] { Read<Timeline>(WithBody(kTempoSequence, 99)); }),
            "Unknown Timeline eventCode 0xffffffff at -1");
  for (const std::string& body : {std::string(), kTempoSequence}) {
    std::istringstream throwing(WithBody(body, 99));
    throwing.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    EXPECT_THROW(Timeline timeline(throwing), std::ios_base::failure);
  }
}

TEST(LegacyTimeline, CutWhereAnEventCodeMustComeIsRefusedOnEveryStream) {
  Timeline without_labels = WithEveryList();
  without_labels.bars_beats.clear();  // a label that is cut off is an error of its own
  const std::string bytes = Written(without_labels);
  const std::size_t body = 4 + 4 + 4 + 4;  // magic, name, length, body length
  const std::set<std::size_t> codes = {body, body + 20, body + 25, body + 39, body + 53};
  for (std::size_t length = body; length < bytes.size(); ++length) {
    const std::string cut = bytes.substr(0, length);
    std::istringstream throwing(cut);
    throwing.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    EXPECT_THROW(Timeline timeline(throwing), std::ios_base::failure) << length;
    // Without a mask, a list that is cut off ends the timeline, and only the missing code is an error.
    if (codes.count(length) == 0) {
      EXPECT_NO_THROW(Read<Timeline>(cut)) << length;
      continue;
    }
    EXPECT_EQ(MessageOf<version0::EventCodeError>([&] { Read<Timeline>(cut); }),
              "Unknown Timeline eventCode 0xffffffff at -1");
  }
}

TEST(LegacyTimeline, EndsQuietlyWhereThePositionCannotBeTaken) {
  // The positions: at the body, in the sequence, behind its record, then the one of the timeline's loop.
  const std::string bytes = WithBody(kTempoSequence + kEmptyLists);
  for (const auto mask : {std::ios_base::goodbit, std::ios_base::failbit | std::ios_base::badbit}) {
    zuna_test::NoPositionAfter buffer(bytes, 3);
    std::istream is(&buffer);
    is.exceptions(mask);
    EXPECT_EQ(Timeline(is).tempos.size(), 1U) << "the empty list behind it is no longer read";
  }
}

TEST(LegacyTimeline, TakesSequencesInAnyOrder) {
  std::string reversed;
  for (std::size_t i = 0; i < kEmptyLists.size(); i += 5) reversed.insert(0, kEmptyLists, i, 5);
  EXPECT_EQ(Written(Read<Timeline>(WithBody(reversed))), WithBody(kEmptyLists));
}

TEST(LegacyTimeline, LaterSequenceOfAKindReplacesTheEarlierOne) {
  std::string other = kTempoSequence;
  other[other.size() - 2] = 90;
  const Timeline timeline = Read<Timeline>(WithBody(kTempoSequence + other));
  ASSERT_EQ(timeline.tempos.size(), 1U);
  EXPECT_EQ(timeline.tempos[0].bpm, 90);
  EXPECT_TRUE(Read<Timeline>(WithBody(kTempoSequence + Bytes({'F', 0, 0, 0, 0}))).tempos.empty());
}

TEST(LegacyTimeline, ReadsOneSequenceEvenInABodyOfLengthZero) {
  EXPECT_EQ(Read<Timeline>(WithBody(kTempoSequence, 0)).tempos.size(), 1U);
}

TEST(LegacyTimeline, EndIsCountedIn32Bits) {
  // The body begins at 13, and 13 + 0xFFFFFFFF is 12: already behind, so that one sequence is read.
  std::string bytes = "TLMN" + Bytes({0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF});
  bytes += kTempoSequence;
  bytes += Bytes({'J', 9, 0, 0, 0, 'J', 6, 0, 0, 0, 0, 0, 4, 4});
  std::istringstream is(bytes);
  const Timeline timeline(is);
  EXPECT_EQ(timeline.tempos.size(), 1U);
  EXPECT_TRUE(timeline.meters.empty());
  EXPECT_EQ(is.tellg(), 13 + 20);
}

TEST(LegacyTimeline, StopsAtTheStatedEnd) {
  std::istringstream is(WithBody(kTempoSequence) + "next");
  EXPECT_EQ(Timeline(is).tempos.size(), 1U);
  EXPECT_EQ(is.tellg(), 13 + 20);
}

TEST(LegacyTimeline, KeepsWhatAShortStreamDelivered) {
  std::istringstream is(WithBody(kTempoSequence.substr(0, 18), 20));
  const Timeline timeline(is);
  EXPECT_EQ(timeline.tempos.size(), 1U);
  EXPECT_TRUE(is.fail());
}

TEST(LegacyTimeline, NameOf256BytesIsRefusedAfterTheMagic) {
  Timeline timeline;
  timeline.name = std::string(256, 'x');
  std::ostringstream os;
  EXPECT_EQ(MessageOf<std::length_error>([&] { timeline.write_binary(os); }),
            "String length is limited to 256 characters");
  EXPECT_EQ(os.str(), "TLMN");
}

TEST(LegacyTimeline, ComparesOnlyTheRecordsOfItsLeftSide) {
  const Timeline full = WithEveryList();
  const auto without = [&](auto list) {
    Timeline shorter = full;
    (shorter.*list).clear();
    return shorter;
  };
  for (const Timeline& shorter :
       {without(&Timeline::tempos), without(&Timeline::bars_beats), without(&Timeline::keys),
        without(&Timeline::page_nums), without(&Timeline::meters)}) {
    EXPECT_TRUE(shorter == full);
    EXPECT_FALSE(shorter != full);
    EXPECT_FALSE(full == shorter) << "a shorter right side is a difference";
  }
}

TEST(LegacyTimeline, ComparesEveryMember) {
  const Timeline full = WithEveryList();
  EXPECT_EQ(full, WithEveryList());
  const auto changed = [&](auto change) {
    Timeline other = full;
    change(other);
    return other;
  };
  EXPECT_NE(full, changed([](Timeline& t) { t.name = "12b"; }));
  EXPECT_NE(full, changed([](Timeline& t) { t.song_length = 1; }));
  EXPECT_NE(full, changed([](Timeline& t) { t.tempos[0].bpm = 1; }));
  EXPECT_NE(full, changed([](Timeline& t) { t.bars_beats[1].label = "3"; }));
  EXPECT_NE(full, changed([](Timeline& t) { t.keys[0].key = 1; }));
  EXPECT_NE(full, changed([](Timeline& t) { t.page_nums[0].page = 9; }));
  EXPECT_NE(full, changed([](Timeline& t) { t.meters[0].numerator = 3; }));
}

}  // namespace
