#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "format_converter/version0/containers/show_data.h"
#include "format_converter/version0/containers/song_data.h"
#include "format_converter/version0/conversions/track_ids.h"
#include "format_converter/version0/primitives/errors.h"
#include "tests/support/bytes.h"
#include "zuna_midi/show_data.h"
#include "zuna_midi/song_data.h"

namespace {

using testing::ElementsAre;
using version0::SongData;
using zuna_test::MessageOf;

constexpr const char* kTooManyTracks = "track_count() greater than 241 cannot be converted.";

/// A current song with a voice for each name, numbered from 1, each with one note.
zuna_midi::SongData CurrentSong(const std::vector<std::string>& voices) {
  zuna_midi::SongData song("12a", "Tune", 480, 7680);
  song.timeline->tempos = {{0, 500000}};
  song.timeline->meters = {{0, 4, 4, 24, 8}};
  for (const std::string& name : voices) {
    auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = static_cast<std::uint16_t>(song.voice_data->track_count() + 1);
    voice->name = name;
    voice->messages = {{480, {0x93, 60, 100}}};
    song.voice_data->AddTrack(voice);
  }
  return song;
}

std::vector<int> TrackIds(const SongData& song) {
  std::vector<int> ids;
  for (const auto& track : song.tracks) ids.push_back(track.track_id);
  return ids;
}

SongData LegacySong() {
  SongData song;
  song.song_number = "12a";
  song.song_name = "Tune";
  song.division = 480;
  song.song_length = 7680;
  song.timeline.tempos = {{0, static_cast<float>(0.5 / 480), 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}};
  song.tracks = {{18, "Horn"}, {9, "Drum Kit"}};
  song.events = {{9, {{7, 240, 0x90, 36, 100, 9}}},
                 {18, {{0, 480, 0x90, 60, 100, 18}, {3, 480, 0xC0, 5, 0, 18}}}};
  return song;
}

TEST(NonDrumIds, AreEveryByteButZeroAndChannelTen) {
  const auto ids = version0::get_non_drum_ids();
  ASSERT_EQ(ids.size(), 239U);
  EXPECT_EQ(ids.front(), 1);
  EXPECT_EQ(ids[8], 10);
  EXPECT_EQ(ids.back(), 255);
  for (const int absent : {0, 9, 25, 249}) EXPECT_THAT(ids, testing::Not(testing::Contains(absent)));
  EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
}

TEST(SongDown, TakesIdsFromThePoolAndNineForDrums) {
  const SongData song(CurrentSong({"Piano", "Drums", "Bass"}));
  EXPECT_THAT(TrackIds(song), ElementsAre(1, 9, 2));
  EXPECT_THAT(song.tracks, ElementsAre(version0::TrackObject(1, "Piano"), version0::TrackObject(9, "Drums"),
                                       version0::TrackObject(2, "Bass")));
}

TEST(SongDown, DrumNamesAreExact) {
  EXPECT_THAT(
      TrackIds(SongData(CurrentSong({"drums", "Drum kit", "Drums ", "Drum Kit", "Drums", " Drums", ""}))),
      ElementsAre(1, 2, 3, 9, 9, 4, 5));
}

TEST(SongDown, SkipsIdsOfChannelTen) {
  const std::vector<int> ids = TrackIds(SongData(CurrentSong(std::vector<std::string>(25, "Violin"))));
  EXPECT_EQ(ids[7], 8);
  EXPECT_EQ(ids[8], 10);
  EXPECT_EQ(ids[22], 24);
  EXPECT_EQ(ids[23], 26);
}

/// A show of songs with `meters` meters and 64 tempos, all at time 0.
zuna_midi::ShowData ShowInDisorder(int songs, std::size_t meters) {
  zuna_midi::ShowData show;
  for (int i = 0; i < songs; ++i) {
    auto song = std::make_shared<zuna_midi::SongData>(CurrentSong({"Piano"}));
    song->song_number = std::to_string(i);
    song->timeline->tempos.assign(64, {0, 500'000});
    song->timeline->meters.assign(meters, {0, 4, 4, 24, 8});
    show.AddSongData(song);
  }
  return show;
}

TEST(ShowDown, RepeatsAtMost4096TemposBeyondTwiceTheEntries) {
  // Each song gets 64 × 64 tempos, and twice its entries are 256.
  EXPECT_EQ(version0::ShowData(ShowInDisorder(1, 64)).songs.size(), 1U);
  EXPECT_EQ(zuna_test::MessageOf<std::length_error>([] { version0::ShowData(ShowInDisorder(2, 64)); }),
            "The meters of the show are in disorder and would repeat its tempos too often");
  // Each song gets 64 × 4 tempos, and twice its entries are 136.
  EXPECT_EQ(version0::ShowData(ShowInDisorder(34, 4)).songs.size(), 34U) << "4080 tempos";
  EXPECT_THROW(version0::ShowData(ShowInDisorder(35, 4)), std::length_error) << "4200 tempos";
}

TEST(SongDown, DrumVoicesShareOneList) {
  zuna_midi::SongData current = CurrentSong({"Drum Kit", "Piano", "Drum Kit"});
  current.voice_data->GetTrack(1)->messages = {{960, {0x99, 36, 1}}, {1920, {0x99, 36, 2}}};
  current.voice_data->GetTrack(3)->messages = {{480, {0x99, 38, 3}}};
  const SongData song(current);
  EXPECT_THAT(TrackIds(song), ElementsAre(9, 1, 9));
  const auto& drums = song.events.at(9);
  ASSERT_EQ(drums.size(), 3U);
  EXPECT_EQ(drums[1].delta_time, 960U);
  EXPECT_EQ(drums[2].abs_time, 480U) << "the second voice's events follow the first's, unsorted";
  EXPECT_EQ(drums[2].delta_time, 480U) << "the running time starts anew with each voice";
}

TEST(SongDown, ComputesDeltaTimesAndDropsTheChannel) {
  zuna_midi::SongData current = CurrentSong({"Piano"});
  current.voice_data->GetTrack(1)->messages = {
      {0, {0xC3, 5, 0}}, {480, {0x9F, 60, 100}}, {480, {0xE0, 1, 2}}, {960, {0x83, 60, 64}}};
  const SongData song(current);
  std::vector<unsigned> deltas;
  std::vector<int> statuses;
  for (const auto& event : song.events.at(1)) {
    deltas.push_back(event.delta_time);
    statuses.push_back(event.status_high);
    EXPECT_EQ(event.track_id, 1);
  }
  EXPECT_THAT(deltas, ElementsAre(0, 480, 0, 480));
  EXPECT_THAT(statuses, ElementsAre(0xC0, 0x90, 0xE0, 0x80));
}

TEST(SongDown, DeltaTimesWrapWhereTimesGoBack) {
  zuna_midi::SongData current = CurrentSong({"Piano"});
  current.voice_data->GetTrack(1)->messages = {{480, {0x90, 60, 1}}, {0, {0x90, 60, 1}}};
  EXPECT_EQ(SongData(current).events.at(1)[1].delta_time, 0xFFFFFFFFU - 479);
}

TEST(SongDown, CopiesIdentityAndNamesTheTimelineByTheNumber) {
  const SongData song(CurrentSong({"Piano"}));
  EXPECT_EQ(song.song_number, "12a");
  EXPECT_EQ(song.song_name, "Tune");
  EXPECT_EQ(song.division, 480);
  EXPECT_EQ(song.song_length, 7680U);
  EXPECT_EQ(song.timeline.name, "12a");
  EXPECT_EQ(song.timeline.song_length, 7680U);
}

TEST(SongDown, VoiceWithoutMessagesHasATrackButNoEvents) {
  zuna_midi::SongData current = CurrentSong({"Piano", "Tacet"});
  current.voice_data->GetTrack(2)->messages.clear();
  const SongData song(current);
  EXPECT_THAT(TrackIds(song), ElementsAre(1, 2));
  EXPECT_EQ(song.events.size(), 1U);
}

TEST(SongDown, RefusesMoreThan241Voices) {
  EXPECT_EQ(SongData(CurrentSong(std::vector<std::string>(241, "Drums"))).tracks.size(), 241U);
  EXPECT_EQ(MessageOf<version0::TrackCountError>(
                [] { SongData(CurrentSong(std::vector<std::string>(242, "Drums"))); }),
            kTooManyTracks);
}

TEST(SongDown, RefusesAsManyVoicesAsLeaveNothingOfA16BitCount) {
  const zuna_midi::SongData current = CurrentSong(std::vector<std::string>(65536, "Drums"));
  ASSERT_EQ(current.voice_data->track_count(), 0);
  EXPECT_EQ(MessageOf<version0::TrackCountError>([&] { SongData song(current); }), kTooManyTracks);
}

TEST(SongDown, RefusesMoreVoicesThanThereAreIds) {
  std::vector<std::string> voices(239, "Violin");
  voices.resize(241, "Drums");
  EXPECT_EQ(TrackIds(SongData(CurrentSong(voices)))[238], 255);
  voices[240] = "Violin";
  EXPECT_EQ(MessageOf<version0::TrackCountError>([&] { SongData song(CurrentSong(voices)); }),
            kTooManyTracks);
}

TEST(SongDown, TimelineIsConvertedBeforeVoicesAreCounted) {
  zuna_midi::SongData current = CurrentSong(std::vector<std::string>(242, "Drums"));
  current.timeline->tempos.clear();
  EXPECT_EQ(MessageOf<std::logic_error>([&] { SongData song(current); }),
            "Expected RTempo event on first iteration!");
}

TEST(SongDown, RefusesASongWithoutTimelineOrVoices) {
  zuna_midi::SongData current = CurrentSong({"Piano"});
  current.timeline = nullptr;
  EXPECT_EQ(MessageOf<std::logic_error>([&] { SongData song(current); }),
            "Song 12a has no timeline or no voice data and cannot be converted");
  current = CurrentSong({"Piano"});
  current.voice_data = nullptr;
  EXPECT_THROW(SongData song(current), std::logic_error);
}

TEST(SongUp, RebuildsVoicesAndChannels) {
  const auto song = LegacySong().get_version_1_0();
  EXPECT_EQ(song->song_number, "12a");
  EXPECT_EQ(song->song_name, "Tune");
  EXPECT_EQ(song->division, 480);
  EXPECT_EQ(song->song_length, 7680U);
  EXPECT_THAT(song->timeline->tempos, ElementsAre(TL::Tempo{0, 500000}));
  ASSERT_EQ(song->voice_data->track_count(), 2);
  const auto& horn = *song->voice_data->GetTrack(18);
  EXPECT_EQ(horn.name, "Horn");
  EXPECT_EQ(horn.reserved, 0xFFFF);
  EXPECT_THAT(horn.messages, ElementsAre(std::pair(480U, std_midi::VoiceMessage(0x92, 60, 100)),
                                         std::pair(480U, std_midi::VoiceMessage(0xC2, 5, 0))));
  const auto& drums = *song->voice_data->GetTrack(9);
  EXPECT_THAT(drums.messages, ElementsAre(std::pair(240U, std_midi::VoiceMessage(0x99, 36, 100))));
}

TEST(SongUp, ChannelIsAddedToTheBitsOfTheStatus) {
  SongData song = LegacySong();
  song.events = {{18, {{0, 480, 0x91, 60, 100, 18}}}};
  EXPECT_EQ(song.get_version_1_0()->voice_data->GetTrack(18)->messages.at(0).second.status, 0x93)
      << "channel 3 of track 18, and a bit that stood where the channel goes";
}

TEST(SongUp, NamesAnEventOnAnUnknownTrack) {
  SongData song = LegacySong();
  song.events[77] = {{0, 0, 0x90, 1, 1, 77}};
  EXPECT_EQ(MessageOf<std::out_of_range>([&] { song.get_version_1_0(); }),
            "There is no voice track with number 77");
}

TEST(SongUp, EmptyListOfAnUnknownTrackIsNoEvent) {
  SongData song = LegacySong();
  song.events[77] = {};
  EXPECT_EQ(song.get_version_1_0()->voice_data->track_count(), 2);
}

TEST(SongUp, TracksThatShareAnIdBecomeOneVoice) {
  SongData song = LegacySong();
  song.tracks.emplace_back(9, "Drums");
  const auto up = song.get_version_1_0();
  EXPECT_EQ(up->voice_data->track_count(), 2);
  EXPECT_EQ(up->voice_data->GetTrack(9)->name, "Drums");
  EXPECT_EQ(up->voice_data->GetTrack(9)->messages.size(), 1U) << "no event is lost or doubled";
}

TEST(SongUp, TimelineErrorsPass) {
  SongData song = LegacySong();
  song.timeline.tempos.clear();
  EXPECT_EQ(MessageOf<std::logic_error>([&] { song.get_version_1_0(); }),
            "Expected RTempo event on first iteration!");
}

TEST(SongUpAndDown, RenumbersTracksFromThePool) {
  const SongData back(*LegacySong().get_version_1_0());
  EXPECT_THAT(TrackIds(back), ElementsAre(9, 1));
  EXPECT_EQ(back.events.at(1).size(), 2U);
}

}  // namespace
