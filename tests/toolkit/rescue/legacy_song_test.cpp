// What comes back of a legacy song that is damaged inside: in its head, among its events, or in one of them.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/legacy_samples.h"
#include "tests/support/rescue_accounts.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/conversion/conversion.h"

namespace {

using namespace std::string_literals;
using zuna_test::RescuedOf;
using zuna_toolkit::LegacyShow;
using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::SongState;

using Texts = std::vector<std::string>;

constexpr std::size_t kEvents = 10;                             // of a song
constexpr std::size_t kSongBegin = 1;                           // of the first song, after the count of songs
constexpr std::size_t kFirstEvent = 4 + 2 + 5 + 6 + 8 + 7 + 4;  // in a song: after its length, number, name,
                                                                // division and length, tracks, count

/// A song of ten events a quarter note apart.
version0::SongData Song(const std::string& number) {
  version0::SongData song = zuna_test::SampleLegacySong(number, 480);
  song.song_length = 4800;
  song.timeline.song_length = 4800;
  song.tracks = {{1, "Piano"}, {9, "Drums"}};
  song.events.clear();
  for (std::uint32_t i = 0; i < kEvents; ++i) {
    const std::uint8_t voice = i % 2 == 0 ? 1 : 9;
    song.events[voice].emplace_back(i < 2 ? i * 480 : 960, i * 480, 0x90, static_cast<std::uint8_t>(60 + i),
                                    100, voice);
  }
  return song;
}

/// The songs "1", "2" and "3".
std::string Show() {
  version0::ShowData show;
  for (const char* number : {"1", "2", "3"}) show.songs[number] = Song(number);
  return zuna_test::Written(show);
}

std::size_t SongSize() { return (Show().size() - kSongBegin) / 3; }

const version0::SongData& SongOf(const Rescued& rescued, const std::string& number) {
  return rescued.document.As<LegacyShow>()->show.songs.at(number);
}

std::size_t EventsOf(const version0::SongData& song) {
  std::size_t count = 0;
  for (const auto& [voice, events] : song.events) count += events.size();
  return count;
}

/// How many events of `song` are none of Song().
std::size_t ChangedEvents(const version0::SongData& song) {
  std::size_t changed = 0;
  const version0::SongData whole = Song("");
  for (const auto& [voice, events] : song.events) {
    for (const version0::EventObject& event : events) {
      const auto found = std::find_if(whole.events.at(voice).begin(), whole.events.at(voice).end(),
                                      [&](const auto& other) { return other.data1 == event.data1; });
      changed += found == whole.events.at(voice).end() || found->abs_time != event.abs_time ? 1 : 0;
    }
  }
  return changed;
}

/// What comes back of `damaged`, a show of three songs of which the one at `index` is damaged: the others are
/// whole.
Rescued RescuedBut(std::size_t index, const std::string& damaged) {
  Rescued rescued = RescuedOf(damaged);
  EXPECT_EQ(zuna_test::WrongAccount(rescued.report, damaged.size()), "");
  EXPECT_EQ(rescued.report.songs.size(), 3U);
  EXPECT_FALSE(rescued.report.complete());
  for (std::size_t i = 0; i < rescued.report.songs.size(); ++i) {
    EXPECT_EQ(rescued.report.songs[i].state, i == index ? SongState::kPartly : SongState::kWhole) << i;
  }
  return rescued;
}

TEST(RescueOfALegacySong, IsWholeWhereNothingIsDamaged) {
  EXPECT_EQ(Show().find("\x90\x3C"), kSongBegin + kFirstEvent + 8);
  EXPECT_TRUE(RescuedOf(Show()).report.complete());
}

TEST(RescueOfALegacySong, TakesTheInsideWhereTheHeadIsZero) {
  for (const std::size_t song : {0U, 1U, 2U}) {
    for (std::size_t zeros = 6; zeros <= kFirstEvent; ++zeros) {
      SCOPED_TRACE(std::to_string(zeros) + " zeros in song " + std::to_string(song));
      std::string damaged = Show();
      damaged.replace(kSongBegin + song * SongSize(), zeros, std::string(zeros, '\0'));
      const Rescued rescued = RescuedBut(song, damaged);
      const RescuedSong& told = rescued.report.songs.at(song);
      EXPECT_EQ(told.number, "");
      EXPECT_EQ(told.remarks.at(zeros > kFirstEvent - 4 ? 1 : 0), "its number is missing");
      EXPECT_EQ(told.name, zeros == 6 ? "Tune" : "");
      const version0::SongData& back = SongOf(rescued, "");
      EXPECT_EQ(EventsOf(back), kEvents);
      EXPECT_EQ(back.song_length, 4800U) << "the timeline has it too";
      EXPECT_EQ(back.timeline.tempos.size(), 1U);
    }
  }
}

TEST(RescueOfALegacySong, TellsWhatOfTheHeadIsMissing) {
  std::string damaged = Show();
  damaged.replace(kSongBegin, 11, std::string(11, '\0'));
  const Rescued rescued = RescuedBut(0, damaged);
  EXPECT_EQ(rescued.report.songs[0].remarks, (Texts{"its number is missing", "its name is missing"}));
  EXPECT_EQ(SongOf(rescued, "").tracks.size(), 2U);
  EXPECT_EQ(SongOf(rescued, "").division, 480U);
  EXPECT_NO_THROW(zuna_toolkit::Up(rescued.document, zuna_toolkit::Companion{}, {1, 2}));
}

TEST(RescueOfALegacySong, TellsThatTheWholeHeadIsMissing) {
  std::string damaged = Show();
  damaged.replace(kSongBegin, kFirstEvent, std::string(kFirstEvent, '\0'));
  const Rescued rescued = RescuedBut(0, damaged);
  EXPECT_NO_THROW(zuna_toolkit::Up(rescued.document, zuna_toolkit::Companion{}, {1, 2}));
  EXPECT_EQ(rescued.report.songs[0].remarks,
            (Texts{"the count of its events is missing", "its number is missing", "its name is missing",
                   "its division is missing",
                   "10 events are of 2 voices that it does not list, added without a name"}));
}

TEST(RescueOfALegacySong, KeepsTheEventsAroundAByteThatIsMissing) {
  for (std::size_t at = 0; at < kEvents * 12; ++at) {
    SCOPED_TRACE(at);
    std::string damaged = Show();
    damaged.erase(kSongBegin + SongSize() + kFirstEvent + at, 1);
    const Rescued rescued = RescuedBut(1, damaged);
    EXPECT_EQ(rescued.report.songs[1].remarks.at(0), "has 9 of the 10 events that it states");
    EXPECT_EQ(EventsOf(SongOf(rescued, "2")), kEvents - 1);
    EXPECT_EQ(ChangedEvents(SongOf(rescued, "2")), 0U);
  }
}

TEST(RescueOfALegacySong, KeepsTheEventsAroundBytesThatAreTooMany) {
  for (const std::size_t count : {1U, 5U, 40U}) {
    for (std::size_t at = 1; at < kEvents * 12; ++at) {
      SCOPED_TRACE(std::to_string(count) + " bytes at " + std::to_string(at));
      std::string damaged = Show();
      damaged.insert(kSongBegin + SongSize() + kFirstEvent + at, std::string(count, '\x7F'));
      const Rescued rescued = RescuedBut(1, damaged);
      EXPECT_GE(EventsOf(SongOf(rescued, "2")), kEvents - 1);
      EXPECT_LE(ChangedEvents(SongOf(rescued, "2")), 1U);
      EXPECT_FALSE(rescued.report.unread.empty() && rescued.report.songs[1].remarks.empty());
    }
  }
}

TEST(RescueOfALegacySong, TakesNoEventsOfTheNextSong) {
  std::string damaged = Show();
  const std::size_t second = kSongBegin + SongSize();
  damaged.erase(second + kFirstEvent + 30, 1);
  damaged[damaged.find("TLMN", second)] = 'x';
  damaged[damaged.find("TLMN", second) - 100] = '\x7F';  // an event of the third song
  const Rescued rescued = RescuedOf(damaged);
  EXPECT_LE(EventsOf(SongOf(rescued, "2")), kEvents);
  for (const auto& [voice, events] : SongOf(rescued, "2").events) {
    for (std::size_t i = 1; i < events.size(); ++i) EXPECT_GT(events[i].abs_time, events[i - 1].abs_time);
  }
}

/// What comes back of the three songs with zeros from `begin` to `end`: the second one without some of its
/// timeline, and the third one without its head.
Rescued RescuedWithZeros(std::size_t begin, std::size_t end) {
  std::string damaged = Show();
  damaged.replace(begin, end - begin, std::string(end - begin, '\0'));
  Rescued rescued = RescuedOf(damaged);
  EXPECT_EQ(zuna_test::WrongAccount(rescued.report, damaged.size()), "");
  EXPECT_EQ(rescued.report.songs.size(), 3U);
  EXPECT_EQ(rescued.report.songs.at(1).number, "2");
  EXPECT_EQ(rescued.report.songs.at(1).state, SongState::kPartly);
  EXPECT_EQ(EventsOf(SongOf(rescued, "2")), kEvents);
  EXPECT_EQ(rescued.report.songs.at(2).state, SongState::kPartly);
  EXPECT_EQ(rescued.report.songs.at(2).remarks.at(1), "its number is missing");
  EXPECT_EQ(EventsOf(SongOf(rescued, "")), kEvents);
  EXPECT_EQ(SongOf(rescued, "").timeline.meters.size(), 1U);
  return rescued;
}

TEST(RescueOfALegacySong, TakesNoTimelineOfTheNextSong) {
  const std::size_t third = kSongBegin + 2 * SongSize();
  const std::size_t timeline = Show().find("TLMN", third - SongSize());
  const Rescued rescued = RescuedWithZeros(timeline, third + kFirstEvent);
  EXPECT_EQ(rescued.report.songs.at(1).remarks,
            (Texts{"the beginning of its timeline is missing", "its tempos, if it had any, are missing",
                   "its bar labels, if it had any, are missing", "its keys, if it had any, are missing",
                   "its page numbers, if it had any, are missing", "its meters, if it had any, are missing",
                   "it gets 120 quarter notes a minute in place of its tempos",
                   "it gets 4/4 in place of its meters"}));
}

TEST(RescueOfALegacySong, TakesNoListsOfTheNextSong) {
  const std::size_t third = kSongBegin + 2 * SongSize();
  const Rescued rescued = RescuedWithZeros(third - 14, third + kFirstEvent);  // from the meters on
  EXPECT_EQ(rescued.report.songs.at(1).remarks,
            (Texts{"its meters, if it had any, are missing", "it gets 4/4 in place of its meters"}));
}

TEST(RescueOfALegacySong, IsOneSongWhereNothingButTheBeginningOfItsTimelineIsLeft) {
  std::string damaged = Show();
  const std::size_t zeros = damaged.find("TLMN", kSongBegin + 2 * SongSize()) + 4 + 2 + 4;
  damaged.replace(zeros, std::string::npos, std::string(damaged.size() - zeros, '\0'));
  const Rescued rescued = RescuedBut(2, damaged);
  EXPECT_EQ(rescued.report.songs[2].remarks.at(0), "the beginning of its timeline is missing");
}

/// What comes back of the three songs with zeros from the first event of the second one up to byte `end` of
/// the third one, which has a name of `name_size` bytes.
Rescued RescuedWithoutTheSecond(std::size_t end, std::size_t name_size) {
  version0::ShowData show;
  for (const char* number : {"1", "2", "3"}) show.songs[number] = Song(number);
  show.songs["3"].song_name = std::string(name_size, 'n');
  std::string damaged = zuna_test::Written(show);
  const std::size_t zeros = kSongBegin + SongSize() + kFirstEvent;
  const std::size_t zeros_end = kSongBegin + 2 * SongSize() + end;
  damaged.replace(zeros, zeros_end - zeros, std::string(zeros_end - zeros, '\0'));
  Rescued rescued = RescuedOf(damaged);
  EXPECT_EQ(zuna_test::WrongAccount(rescued.report, damaged.size()), "");
  EXPECT_EQ(rescued.report.songs.size(), 2U);
  EXPECT_EQ(rescued.report.songs.at(1).state, SongState::kPartly);
  return rescued;
}

TEST(RescueOfALegacySong, GetsNoNumberOfAnotherSong) {
  const Rescued rescued = RescuedWithoutTheSecond(6, 255);
  EXPECT_EQ(rescued.report.songs.at(1).number, "");
  EXPECT_EQ(rescued.report.songs.at(1).name, std::string(255, 'n'));
  EXPECT_EQ(rescued.report.songs.at(1).remarks, Texts{"its number is missing"});
}

TEST(RescueOfALegacySong, TellsWhatIsBeforeItsHeadAsUnread) {
  const std::uint64_t begin = kSongBegin + SongSize();
  const std::uint64_t third = begin + SongSize();
  for (const auto& [end, first_read] : {std::pair{6U, 6U}, {11U, 11U}, {kFirstEvent, kFirstEvent}}) {
    SCOPED_TRACE(end);
    const Rescued rescued = RescuedWithoutTheSecond(end, 4);
    EXPECT_EQ(rescued.report.songs.at(1).offset, begin);
    ASSERT_EQ(rescued.report.unread.size(), 1U);
    EXPECT_LE(rescued.report.unread[0].begin, begin + 6) << "its number is within reach";
    EXPECT_EQ(rescued.report.unread[0].end, third + first_read);
  }
}

TEST(RescueOfALegacySong, TellsBytesBetweenItsEvents) {
  std::string damaged = Show();
  damaged.insert(kSongBegin + SongSize() + kFirstEvent + 36, std::string(40, '\x7F'));
  EXPECT_EQ(RescuedBut(1, damaged).report.songs[1].remarks,
            Texts{"there are other bytes between its events"});
}

TEST(RescueOfALegacySong, TellsBytesBetweenItsLists) {
  std::string damaged = Show();
  damaged.insert(kSongBegin + 2 * SongSize() - 14, std::string(7, '\x7F'));  // before the meters
  EXPECT_EQ(RescuedBut(1, damaged).report.songs[1].remarks, Texts{"there are other bytes between its lists"});
}

TEST(RescueOfALegacySong, IsLostWithoutEvents) {
  std::string damaged = Show();
  damaged.replace(kSongBegin + SongSize() + kFirstEvent, kEvents * 12, std::string(kEvents * 12 - 1, '\0'));
  const Rescued rescued = RescuedOf(damaged);
  ASSERT_EQ(rescued.report.songs.size(), 3U);
  EXPECT_EQ(rescued.report.songs[1].number, "2");
  EXPECT_EQ(rescued.report.songs[1].state, SongState::kLost);
  EXPECT_EQ(rescued.report.songs[1].remarks, Texts{"its events cannot be told from its beginning"});
}

TEST(RescueOfALegacySong, IsLostWithFewEventsWhereNoTimelineIsWhole) {
  version0::SongData few = Song("2");
  for (auto& [voice, events] : few.events) events.resize(2);
  std::string first = zuna_test::Written(Song("1"));
  first.erase(first.size() - 20, 1);
  std::string second = zuna_test::Written(few);
  second.erase(second.size() - 20, 1);
  second.erase(kFirstEvent + 12, 1);
  const Rescued rescued = RescuedOf("\2" + first + second);
  ASSERT_EQ(rescued.report.songs.size(), 2U);
  EXPECT_EQ(rescued.report.songs[0].state, SongState::kPartly);
  EXPECT_EQ(rescued.report.songs[1].number, "2");
  EXPECT_EQ(rescued.report.songs[1].state, SongState::kLost);
  EXPECT_EQ(rescued.report.songs[1].remarks, Texts{"nothing tells that it is a song"});
}

TEST(RescueOfALegacySong, MayHaveNoNumber) {
  std::string second = zuna_test::Written(Song(""));
  second.erase(kFirstEvent - 1 + 30, 1);  // there is no number
  const std::string damaged = "\3" + zuna_test::Written(Song("1")) + second + zuna_test::Written(Song("3"));
  const Rescued rescued = RescuedBut(1, damaged);
  EXPECT_EQ(rescued.report.songs[1].remarks.at(0), "has 9 of the 10 events that it states");
  EXPECT_EQ(rescued.report.songs[1].name, "Tune");
}

TEST(RescueOfALegacySong, TellsBytesBetweenItsEventsAndItsTimeline) {
  for (const std::size_t count : {1U, 48U}) {
    std::string damaged = Show();
    damaged.insert(damaged.find("TLMN", kSongBegin + SongSize()), std::string(count, '\x7F'));
    const Rescued rescued = RescuedBut(1, damaged);
    EXPECT_EQ(rescued.report.songs[1].remarks, Texts{"there are other bytes after its events"}) << count;
  }
}

TEST(RescueOfALegacySong, TellsAnEventThatIsNoMessage) {
  for (const auto& [offset, byte] :
       {std::pair{8, '\x10'}, {8, '\x91'}, {8, '\xF0'}, {9, '\x80'}, {10, '\xFF'}}) {
    std::string damaged = Show();
    damaged[kSongBegin + SongSize() + kFirstEvent + 12 + static_cast<std::size_t>(offset)] = byte;
    const Rescued rescued = RescuedBut(1, damaged);
    EXPECT_EQ(rescued.report.songs[1].remarks, Texts{"1 event has bytes that no MIDI message has"});
    EXPECT_FALSE(rescued.report.songs[1].vouched);
    EXPECT_EQ(EventsOf(SongOf(rescued, "2")), kEvents);
  }
}

TEST(RescueOfALegacySong, TellsADeltaTimeThatContradictsTheTime) {
  std::string damaged = Show();
  damaged[kSongBegin + SongSize() + kFirstEvent + 12] = '\1';
  const Rescued rescued = RescuedBut(1, damaged);
  EXPECT_EQ(rescued.report.songs[1].remarks,
            Texts{"1 event has another delta time than its time and that of the event before it give"});
}

TEST(RescueOfALegacySong, TakesVoicesThatShareATrack) {
  version0::ShowData show;
  version0::SongData song = Song("1");
  auto& [id, events] = *song.events.begin();
  events.emplace_back(5, 5, 0x90, 60, 100, id);  // the first event of the second voice
  events.emplace_back(10, 15, 0x80, 60, 0, id);
  show.songs.emplace("1", song);
  EXPECT_TRUE(RescuedOf(zuna_test::Written(show)).report.complete());
}

TEST(RescueOfALegacySong, KeepsVoicesThatShareATrackAfterDamage) {
  version0::SongData song = Song("1");
  song.events.clear();
  for (std::uint32_t i = 0; i < kEvents; ++i) {  // two voices of five events
    const std::uint32_t time = 480 * (i % 5) + (i < 5 ? 480 : 240);
    const std::uint32_t delta = i % 5 == 0 ? time : 480;
    song.events[1].emplace_back(delta, time, 0x90, static_cast<std::uint8_t>(60 + i), 100, 1);
  }
  const std::string whole = "\1" + zuna_test::Written(song);
  EXPECT_TRUE(RescuedOf(whole).report.complete());
  for (std::size_t event = 0; event < kEvents; ++event) {
    std::string damaged = whole;
    damaged.erase(whole.find("TLMN") - (kEvents - event) * 12 + 8, 1);
    const Rescued rescued = RescuedOf(damaged);
    EXPECT_EQ(rescued.report.songs.at(0).remarks.at(0), "has 9 of the 10 events that it states") << event;
  }
}

/// A song without its last list, and with lengths that fit.
std::string WithoutMeters(const std::string& number) {
  std::string song = zuna_test::Written(Song(number));
  const std::size_t size = 5 + 9;  // of the meters, which are the last list
  song.resize(song.size() - size);
  const std::size_t length = song.find("TLMN") + 4 + 2 + 4;  // of the lists, after name and song length
  song[length] = static_cast<char>(static_cast<unsigned char>(song[length]) - size);
  return song;
}

TEST(RescueOfALegacySong, IsWholeWhereItsWriterLeavesListsOut) {
  const Rescued rescued = RescuedOf("\3" + WithoutMeters("1") + WithoutMeters("2") + WithoutMeters("3"));
  ASSERT_EQ(rescued.report.songs.size(), 3U);
  for (const RescuedSong& song : rescued.report.songs) EXPECT_EQ(song.remarks, Texts()) << song.number;
  EXPECT_TRUE(rescued.report.complete());
}

}  // namespace
