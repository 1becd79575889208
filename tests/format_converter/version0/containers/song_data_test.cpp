#include "format_converter/version0/containers/song_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/records/internal/event_map.h"
#include "tests/format_converter/support/errors.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/format_converter/support/positions.h"
#include "tests/support/bytes.h"

namespace {

using version0::SongData;
using version0::TrackObject;
using version0::Version0Error;
using zuna_test::Bytes;
using zuna_test::ExactMessageOf;
using zuna_test::MessageOf;
using zuna_test::Read;
using zuna_test::Written;

const std::string kTimeline = Bytes({
    'T', 'L', 'M', 'N', 0, 0,   0, 0, 0, 25, 0,   0, 0,  // no name, no length, 25 bytes
    'F', 0,   0,   0,   0, 'G', 0, 0, 0, 0,  'H', 0, 0, 0, 0, 'I', 0, 0, 0, 0, 'J', 0, 0, 0, 0,
});

const std::string kSong = Bytes({
                              41,   0,    0,    0,          // record length: 4 + 5 + 2 + 4 + 1 + 9 + 4 + 12
                              3,    '1',  '2',  'a',        // song number
                              4,    'T',  'u',  'n',  'e',  // song name
                              0xE0, 0x01,                   // division 480
                              0x00, 0x1E, 0x00, 0x00,       // song length 7680
                              1,                            // track count
                              1,    7,    'V',  'i',  'o', 'l', 'i', 'n', 's',  // track 1
                              1,    0,    0,    0,                              // event count
                              5,    0,    0,    0,                              // delta time
                              0xE0, 0x01, 0,    0,                              // absolute time 480
                              0x90, 60,   100,                                  // status, data
                              1,                                                // track id
                          }) +
                          kTimeline;

SongData Song() {
  SongData song;
  song.song_number = "12a";
  song.song_name = "Tune";
  song.division = 480;
  song.song_length = 7680;
  song.tracks = {{1, "Violins"}};
  song.events = {{1, {{5, 480, 0x90, 60, 100, 1}}}};
  return song;
}

TEST(TrackObject, BytesAndComparison) {
  const TrackObject track(18, "Horn");
  EXPECT_EQ(Written(track), Bytes({18, 4, 'H', 'o', 'r', 'n'}));
  EXPECT_EQ(Read<TrackObject>(Written(track)), track);
  EXPECT_TRUE(track < TrackObject(200, "A"));
  EXPECT_FALSE(TrackObject(200, "A") < track);
  EXPECT_EQ(ExactMessageOf<Version0Error>([&] { static_cast<void>(track == TrackObject(1, "Horn")); }),
            "track_id not equal");
  EXPECT_EQ(ExactMessageOf<Version0Error>([&] { static_cast<void>(track != TrackObject(18, "Horns")); }),
            "track_name not equal");
  EXPECT_FALSE(track != TrackObject(18, "Horn"));
}

TEST(TrackObject, NameOf256BytesIsRefusedAfterTheId) {
  std::ostringstream os;
  EXPECT_EQ(MessageOf<std::length_error>([&] { TrackObject(7, std::string(256, 'x')).write_binary(os); }),
            "String length is limited to 256 characters");
  EXPECT_EQ(os.str(), Bytes({7}));
}

TEST(LegacySong, Bytes) {
  EXPECT_EQ(Written(Song()), kSong);
  const auto song = Read<SongData>(kSong);
  EXPECT_EQ(song, Song());
  EXPECT_EQ(Song(), song);
  EXPECT_EQ(song.events.at(1).at(0).delta_time, 5U);
  EXPECT_EQ(Written(song), kSong);
}

TEST(LegacySong, RecordLengthIsNeitherCheckedNorUsed) {
  std::string bytes = kSong;
  bytes[0] = 1;
  bytes[3] = 9;
  EXPECT_EQ(Written(Read<SongData>(bytes)), kSong);
}

TEST(LegacySong, GroupsEventsByTrackAndKeepsTheirOrder) {
  const auto event = [](int time, int track) {
    return Bytes({0, 0, 0, 0, time, 0, 0, 0, 0x90, 60, 100, track});
  };
  const std::string head = kSong.substr(0, 29);
  const std::string interleaved = head + Bytes({5, 0, 0, 0}) + event(1, 7) + event(2, 1) + event(0, 7) +
                                  event(9, 200) + event(1, 1) + kTimeline;
  const auto song = Read<SongData>(interleaved);
  EXPECT_EQ(song.events.size(), 3U) << "tracks 7 and 200 are kept though no track has these ids";
  EXPECT_EQ(Written(song).substr(29), Bytes({5, 0, 0, 0}) + event(2, 1) + event(1, 1) + event(1, 7) +
                                          event(0, 7) + event(9, 200) + kTimeline);
}

TEST(LegacySong, ReadsMoreEventsThanFitIntoOneWindow) {
  SongData song = Song();
  for (unsigned i = 0; i < 100'000; ++i) {
    const auto track = static_cast<unsigned char>(i % 3 == 0 ? 200 : i / 7000 % 100 + 1);
    song.events[track].emplace_back(i, i, 0x90, 60, 100, track);
  }
  const std::string bytes = Written(song);
  EXPECT_EQ(Written(Read<SongData>(bytes)), bytes);
}

TEST(LegacySong, WithoutEventsCannotBeWritten) {
  SongData song = Song();
  for (const auto& events : {version0::EventMap(), version0::EventMap{{1, {}}}}) {
    song.events = events;
    std::ostringstream os;
    EXPECT_EQ(ExactMessageOf<std::out_of_range>([&] { song.write_binary(os); }), "vector");
    EXPECT_EQ(os.str(), Bytes({0, 0, 0, 0}) + kSong.substr(4, 25) + Bytes({0, 0, 0, 0}))
        << "the zero count has been written";
  }
}

TEST(LegacySong, WithoutEventsReads) {
  const auto song = Read<SongData>(kSong.substr(0, 29) + Bytes({0, 0, 0, 0}) + kTimeline);
  EXPECT_TRUE(song.events.empty());
  EXPECT_EQ(song.tracks.size(), 1U);
}

TEST(LegacySong, WithoutTracksReads) {
  std::string bytes = kSong;
  bytes.erase(20, 9)[19] = 0;
  const auto song = Read<SongData>(bytes);
  EXPECT_TRUE(song.tracks.empty());
  EXPECT_EQ(song.events.at(1).size(), 1U) << "the event counts begin right behind the zero";
  EXPECT_EQ(song.timeline, Song().timeline);
}

TEST(LegacySong, TextsOf256BytesAreRefused) {
  const auto refused = [](auto change, std::size_t written) {
    SongData song = Song();
    change(song);
    std::ostringstream os;
    EXPECT_EQ(MessageOf<std::length_error>([&] { song.write_binary(os); }),
              "String length is limited to 256 characters");
    EXPECT_EQ(os.str().size(), written);
  };
  const std::string too_long(256, 'x');
  refused([&](SongData& song) { song.song_number = too_long; }, 4);
  refused([&](SongData& song) { song.song_name = too_long; }, 4 + 4);
  refused([&](SongData& song) { song.tracks[0].track_name = too_long; }, 4 + 4 + 5 + 2 + 4 + 1 + 1);
  refused([&](SongData& song) { song.timeline.name = too_long; }, kSong.size() - kTimeline.size() + 4);
}

TEST(LegacySong, TrackCountIsOneByte) {
  SongData song = Song();
  song.tracks.assign(257, TrackObject(1, ""));
  EXPECT_EQ(Written(song)[19], 1) << "257 modulo 256";
}

TEST(LegacySong, ShortReadThrowsWhereTheStreamDoes) {
  std::istringstream throwing(kSong.substr(0, kSong.size() - kTimeline.size() - 1));
  throwing.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  EXPECT_THROW(SongData song(throwing), std::ios_base::failure);
}

TEST(LegacySong, ShortReadOnAClearStreamIsFoundInTheNextField) {
  EXPECT_EQ(ExactMessageOf<std::length_error>([] { Read<SongData>(kSong.substr(0, 8)); }), "basic_string");
  EXPECT_THROW(Read<SongData>(kSong.substr(0, 40)), version0::IDError);
}

TEST(LegacySong, TimelineErrorsPass) {
  std::string bytes = kSong;
  bytes[bytes.size() - kTimeline.size()] = 'X';
  EXPECT_EQ(MessageOf<version0::IDError>([&] { Read<SongData>(bytes); }),
            "Version0 Timeline must begin with \"TLMN\". Begins with: XLMN");
}

TEST(LegacySong, HostileEventCountCostsNothing) {
  const std::string hostile = kSong.substr(0, 29) + Bytes({0xFF, 0xFF, 0xFF, 0xFF}) + kTimeline;
  EXPECT_THROW(Read<SongData>(hostile), version0::IDError);
  std::istringstream throwing(hostile);
  throwing.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  EXPECT_THROW(SongData song(throwing), std::ios_base::failure);
}

/// A stream's bytes without its positions, as from a pipe.
class Pipe : public std::stringbuf {
 public:
  explicit Pipe(const std::string& bytes) : std::stringbuf(bytes) {}

 protected:
  pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
    return {off_type(-1)};
  }
  pos_type seekpos(pos_type, std::ios_base::openmode) override { return {off_type(-1)}; }
};

TEST(LegacySong, ReadsEventsFromAStreamThatCannotSeek) {
  Pipe pipe(Bytes({2, 0, 0, 0}) + std::string(24, '\1'));
  std::istream is(&pipe);
  EXPECT_EQ(version0::read_events(is).at(1).size(), 2U);
}

TEST(LegacySong, ReadingASmallOneAsksForNothingButReads) {
  zuna_test::CountedSeeks events(Bytes({2, 0, 0, 0}) + std::string(24, '\1'));
  std::istream is(&events);
  EXPECT_EQ(version0::read_events(is).at(1).size(), 2U);
  EXPECT_EQ(events.tells() + events.moves(), 0);

  zuna_test::CountedSeeks song(kSong);
  std::istream song_stream(&song);
  EXPECT_EQ(SongData(song_stream), Song());
  EXPECT_EQ(song.moves(), 0);
  EXPECT_EQ(song.tells(), 1 + 5) << "the timeline's own: at its body and behind each list";
}

TEST(LegacySong, ReadingOneWithALargeCountLooksHowMuchThereIs) {
  const std::string count = Bytes({0x00, 0x00, 0x01, 0x00});  // 65536
  zuna_test::CountedSeeks none(count + std::string(12, '\1'));
  std::istream hostile(&none);
  EXPECT_TRUE(version0::read_events(hostile).empty());
  EXPECT_EQ(none.moves(), 2) << "to the end and back";

  zuna_test::CountedSeeks all(count + std::string(65536 * 12, '\1'));
  std::istream is(&all);
  EXPECT_EQ(version0::read_events(is).at(1).capacity(), 65536U) << "reserved once, to the event";
  EXPECT_EQ(all.moves(), 3) << "and back to the first event";
}

std::string Difference(const SongData& a, const SongData& b) {
  return ExactMessageOf<Version0Error>([&] { static_cast<void>(a != b); });
}

TEST(LegacySong, NamesTheFirstDifference) {
  const auto difference = [](auto change) {
    SongData other = Song();
    change(other);
    return Difference(Song(), other);
  };
  EXPECT_EQ(difference([](SongData& s) { s.song_number = "12b"; }), "song_number failed");
  EXPECT_EQ(difference([](SongData& s) { s.song_name = "Tunes"; }), "song_name failed");
  EXPECT_EQ(difference([](SongData& s) { s.division = 96; }), "division failed");
  EXPECT_EQ(difference([](SongData& s) { s.song_length = 1; }), "song_length failed");
  EXPECT_EQ(difference([](SongData& s) { s.tracks[0].track_id = 2; }), "track_id not equal");
  EXPECT_EQ(difference([](SongData& s) { s.tracks[0].track_name = "Viola"; }), "track_name not equal");
  EXPECT_EQ(difference([](SongData& s) { s.timeline.name = "x"; }), "timeline failed");
  EXPECT_EQ(ExactMessageOf<Version0Error>([] { static_cast<void>(Song() == SongData()); }),
            "song_number failed")
      << "the base class itself";
}

TEST(LegacySong, ComparesInOneOrder) {
  SongData other;
  other.song_number = "12a";
  EXPECT_EQ(Difference(Song(), other), "song_name failed");
  other.song_name = "Tune";
  EXPECT_EQ(Difference(Song(), other), "division failed");
  other.division = 480;
  EXPECT_EQ(Difference(Song(), other), "song_length failed");
  other.song_length = 7680;
  other.timeline.name = "x";
  EXPECT_EQ(Difference(Song(), other), "tracks did not compare equal");
  other.tracks = Song().tracks;
  EXPECT_EQ(Difference(Song(), other), "timeline failed");
  other.timeline.name = "";
  EXPECT_EQ(Difference(Song(), other), "events did not compare equal");
}

TEST(LegacySong, ReportsADifferenceBeforeTheEndOfTheShorterSide) {
  SongData left = Song();
  left.tracks.emplace_back(2, "Viola");
  SongData right = Song();
  right.tracks[0].track_name = "Horns";
  EXPECT_EQ(Difference(left, right), "track_name not equal") << "before the track that the right side lacks";

  left = right = Song();
  left.events[1].emplace_back(0, 960, 0x80, 60, 0, 1);
  right.events[1][0].data1 = 61;
  const auto printed = [&] { return zuna_test::Print([&] { static_cast<void>(left == right); }); };
  EXPECT_EQ(Difference(left, right), "EventObject data1 not equal");
  EXPECT_EQ(printed().text,
            "EventObject(5, 480, 0x90, 60, 100, 1)\n"
            "EventObject(0, 960, 0x80, 60, 0, 1)\n"
            "EventObject(5, 480, 0x90, 61, 100, 1)\n");

  left.events[2] = {{0, 1, 0x90, 1, 1, 2}};
  EXPECT_EQ(Difference(left, right), "EventObject data1 not equal") << "before the id that it lacks";

  right.events[1][0].data1 = 60;
  EXPECT_EQ(Difference(left, right), "events did not compare equal") << "the shorter list ends first";
  EXPECT_EQ(printed().text,
            "EventObject(5, 480, 0x90, 60, 100, 1)\n"
            "EventObject(0, 960, 0x80, 60, 0, 1)\n"
            "EventObject(5, 480, 0x90, 60, 100, 1)\n");

  right.events[1] = left.events[1];
  EXPECT_EQ(Difference(left, right), "events did not compare equal") << "no list for the id";
  EXPECT_EQ(printed().text, "");
}

TEST(LegacySong, DeltaTimesDoNotCount) {
  SongData other = Song();
  other.events[1][0].delta_time = 99;
  EXPECT_TRUE(Song() == other);
  EXPECT_FALSE(Song() != other);
}

TEST(LegacySong, SurplusOnTheRightDoesNotCount) {
  SongData longer = Song();
  longer.tracks.emplace_back(2, "Viola");
  longer.events[1].emplace_back(0, 960, 0x80, 60, 0, 1);
  longer.events[2].emplace_back(0, 960, 0x80, 60, 0, 2);
  EXPECT_TRUE(Song() == longer);
  EXPECT_EQ(Difference(longer, Song()), "tracks did not compare equal");
  longer.tracks.pop_back();
  EXPECT_EQ(Difference(longer, Song()), "events did not compare equal");
  longer.events.erase(2);
  EXPECT_EQ(Difference(longer, Song()), "events did not compare equal");
}

TEST(LegacySong, KeysOfTheEventsDoNotCount) {
  SongData other = Song();
  other.events = {{77, Song().events[1]}};
  EXPECT_TRUE(Song() == other);
}

TEST(LegacySong, PrintsBothTracksWhereAnEventDiffers) {
  SongData song = Song();
  song.events[2] = {{0, 1, 0x90, 1, 1, 2}, {0, 2, 0x90, 2, 2, 2}};
  SongData other = song;
  other.events[2][1].data2 = 3;
  other.events[2].emplace_back(0, 3, 0x90, 3, 3, 2);
  std::string difference;
  const auto printed = zuna_test::Print([&] { difference = Difference(song, other); });
  EXPECT_EQ(printed.unflushed_lines, 0);
  EXPECT_EQ(printed.text,
            "EventObject(0, 1, 0x90, 1, 1, 2)\n"
            "EventObject(0, 2, 0x90, 2, 2, 2)\n"
            "EventObject(0, 1, 0x90, 1, 1, 2)\n"
            "EventObject(0, 2, 0x90, 2, 3, 2)\n"
            "EventObject(0, 3, 0x90, 3, 3, 2)\n");
  EXPECT_EQ(difference, "EventObject data2 not equal");
}

}  // namespace
