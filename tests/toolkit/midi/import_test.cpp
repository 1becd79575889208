#include "toolkit/midi/songs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/smf/smf_bytes.h"

namespace zuna_toolkit::midi {
namespace {

using smf::B;
using std_midi::VoiceMessage;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

VoiceMessage Note() { return {0x90, 60, 100}; }

smf::Track TrackOf(const std::string& name, const std::vector<VoiceMessage>& messages) {
  smf::Track track;
  if (!name.empty()) track.metas.push_back({0, smf::kTrackName, name});
  for (const VoiceMessage& message : messages) track.messages.emplace_back(0, message);
  return track;
}

smf::File FileOf(std::vector<smf::Track> tracks) {
  smf::File file;
  file.division = 480;
  file.tracks = std::move(tracks);
  return file;
}

struct Imported {
  std::shared_ptr<zuna_midi::SongData> song;
  Report report;

  explicit Imported(const smf::File& file) { song = ImportSong(file, "7", "ballad", report); }

  std::vector<std::pair<int, std::string>> VoiceNames() const {
    std::vector<std::pair<int, std::string>> names;
    for (const auto& [number, voice] : song->voice_data->tracks()) names.emplace_back(number, voice->name);
    return names;
  }
};

TEST(MidiImport, NamesTheSongAfterTheSequence) {
  Imported imported(FileOf({TrackOf("Moon River", {}), TrackOf("Piano", {Note()})}));
  EXPECT_EQ(imported.song->song_number, "7");
  EXPECT_EQ(imported.song->song_name, "Moon River");
  EXPECT_EQ(imported.song->division, 480);
  EXPECT_TRUE(imported.report.not_kept.empty());
}

TEST(MidiImport, NamesTheSongAfterTheTrackOfFormat0) {
  smf::File file = FileOf({TrackOf("Moon River", {Note()})});
  file.format = 0;
  const Imported imported(file);
  EXPECT_EQ(imported.song->song_name, "Moon River");
  EXPECT_THAT(imported.VoiceNames(), ElementsAre(Pair(1, "Moon River")));
}

TEST(MidiImport, NamesTheSongAfterTheFileOtherwise) {
  EXPECT_EQ(Imported(FileOf({TrackOf("Piano", {Note()})})).song->song_name, "ballad");
  EXPECT_EQ(Imported(FileOf({TrackOf("", {})})).song->song_name, "ballad");
  EXPECT_EQ(Imported(FileOf({})).song->song_name, "ballad");
}

TEST(MidiImport, MakesAVoiceOfEveryChannelOfEveryTrack) {
  const VoiceMessage on_3(0x92, 60, 100);
  const VoiceMessage program_1(0xC0, 7, 0);
  const Imported imported(FileOf({TrackOf("Strings", {on_3, program_1, on_3}), TrackOf("", {on_3})}));
  EXPECT_THAT(imported.VoiceNames(), ElementsAre(Pair(1, "Strings (channel 1)"),
                                                 Pair(2, "Strings (channel 3)"), Pair(3, "Track 2")));
  const auto& tracks = imported.song->voice_data->tracks();
  EXPECT_THAT(tracks.at(1)->messages, ElementsAre(Pair(0, program_1)));
  EXPECT_THAT(tracks.at(2)->messages, ElementsAre(Pair(0, on_3), Pair(0, on_3)));
  EXPECT_EQ(tracks.at(1)->reserved, 0xFFFF);
}

TEST(MidiImport, NamesPercussionDrumKit) {
  const VoiceMessage drum(0x99, 36, 100);
  Imported imported(FileOf({TrackOf("Rock Set", {drum}), TrackOf("Drum Kit", {drum}),
                            TrackOf("Mixed", {drum, Note()}), TrackOf("", {drum})}));
  EXPECT_THAT(imported.VoiceNames(),
              ElementsAre(Pair(1, "Drum Kit"), Pair(2, "Drum Kit"), Pair(3, "Mixed (channel 1)"),
                          Pair(4, "Drum Kit"), Pair(5, "Drum Kit")));
  EXPECT_EQ(imported.report.not_kept.ToString(), "1 name of a percussion track");
}

TEST(MidiImport, SaysWhenAVoiceWouldBecomeDrums) {
  Imported imported(FileOf({TrackOf("Drums", {Note()})}));
  EXPECT_THAT(imported.VoiceNames(), ElementsAre(Pair(1, "Drums")));
  EXPECT_THAT(imported.report.remarks,
              ElementsAre("voice 1 is named \"Drums\" but plays on channel 1; format 0.0 would move it to "
                          "channel 10"));
}

TEST(MidiImport, MergesTheTimelineOfAllTracks) {
  smf::Track first = TrackOf("", {});
  first.metas = {{0, smf::kTempo, B("\x07\xA1\x20")}, {960, smf::kMeter, B("\x06\x03\x24\x08")}};
  first.end = 100;
  smf::Track second = TrackOf("", {Note()});
  second.metas = {{0, smf::kMeter, B("\x03\x02\x18\x08")},
                  {480, smf::kTempo, B("\x06\x8A\x1B")},
                  {480, smf::kKey, B("\xFD\x01")}};
  second.end = 1440;
  Imported imported(FileOf({first, second}));
  const TL::Timeline& timeline = *imported.song->timeline;
  EXPECT_THAT(timeline.tempos, ElementsAre(TL::Tempo{0, 500000}, TL::Tempo{480, 428571}));
  EXPECT_THAT(timeline.meters, ElementsAre(TL::Meter{0, 3, 4, 24, 8}, TL::Meter{960, 6, 8, 36, 8}));
  EXPECT_THAT(timeline.keys, ElementsAre(TL::Key{480, -3, 1}));
  EXPECT_THAT(timeline.page_numbers, IsEmpty());
  EXPECT_EQ(timeline.bars_beats.size(), 2U);
  EXPECT_EQ(imported.song->song_length, 1440U);
  EXPECT_TRUE(imported.report.not_kept.empty());
}

TEST(MidiImport, BeginsWithTempoAndMeter) {
  smf::Track track = TrackOf("", {Note()});
  track.metas = {{10, smf::kTempo, B("\x00\x00\x01")}, {10, smf::kMeter, B("\x01\x00\x18\x08")}};
  Imported imported(FileOf({track}));
  EXPECT_THAT(imported.song->timeline->tempos, ElementsAre(TL::Tempo{0, 500000}, TL::Tempo{10, 1}));
  EXPECT_THAT(imported.song->timeline->meters,
              ElementsAre(TL::Meter{0, 4, 4, 24, 8}, TL::Meter{10, 1, 1, 24, 8}));
}

TEST(MidiImport, KeepsTheLastOfSeveralAtOneTime) {
  smf::Track track = TrackOf("", {Note()});
  track.metas = {{0, smf::kTempo, B("\x00\x00\x01")},
                 {0, smf::kTempo, B("\x00\x00\x02")},
                 {0, smf::kTempo, B("\x00\x00\x02")},
                 {0, smf::kKey, B("\x00\x00")},
                 {0, smf::kKey, B("\x01\x00")}};
  Imported imported(FileOf({track}));
  EXPECT_THAT(imported.song->timeline->tempos, ElementsAre(TL::Tempo{0, 2}));
  EXPECT_EQ(imported.report.not_kept.ToString(),
            "1 tempo with another one at its time, 1 key with another one at its time");
}

TEST(MidiImport, CountsWhatAShowCannotHold) {
  smf::Track track = TrackOf("Piano", {Note()});
  track.sysex_count = 2;
  track.metas = {{0, smf::kMeter, B("\x00\x02\x18\x08")},
                 {0, smf::kMeter, B("\x04\x08\x18\x08")},
                 {0, smf::kMeter, B("\x04")},
                 {0, smf::kTempo, B("\x04")},
                 {0, smf::kKey, ""},
                 {0, smf::kLyric, "la"},
                 {0, smf::kLyric, "la"},
                 {0, smf::kCopyright, "(c)"},
                 {0, smf::kTrackName, "Piano"},
                 {0, smf::kTrackName, "Grand Piano"},
                 {0, 0x4B, "?"}};
  Imported imported(FileOf({TrackOf("", {}), track, TrackOf("by me", {})}));
  EXPECT_EQ(imported.report.not_kept.ToString(),
            "1 further name of a track, 2 system-exclusive messages, 1 name of a track without messages, "
            "2 meters with the numerator 0 or a denominator above 128, 1 malformed meter, 1 malformed tempo, "
            "1 malformed key, 2 lyrics, 1 copyright notice, 1 unknown meta event");
}

TEST(MidiImport, SaysWhereBarLabelsEnd) {
  smf::Track track = TrackOf("", {Note()});
  track.metas = {{0, smf::kMeter, B("\x01\x07\x18\x08")}};
  track.end = 0xFFFFFFFF;
  EXPECT_THAT(Imported(FileOf({track})).report.remarks,
              ElementsAre("bars are labelled up to bar 10000 only"));
}

TEST(MidiImport, RefusesMoreVoicesThanThereAreNumbers) {
  try {
    const Imported imported(FileOf(std::vector<smf::Track>(65536, TrackOf("", {Note()}))));
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(),
                 "it has more than 65535 voices (channels of tracks); split it into several files");
  }
}

}  // namespace
}  // namespace zuna_toolkit::midi
