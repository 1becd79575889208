#include "toolkit/midi/songs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/smf/smf_bytes.h"
#include "toolkit/smf/file.h"

namespace zuna_toolkit::midi {
namespace {

using smf::B;
using smf::MetaEvent;
using std_midi::VoiceMessage;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

std::shared_ptr<zuna_midi::VoiceTrack> AddVoice(zuna_midi::SongData& song, std::uint16_t number,
                                                const std::string& name) {
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = number;
  voice->name = name;
  song.voice_data->AddTrack(voice);
  return voice;
}

TEST(MidiExport, PutsTheTimelineIntoTheFirstTrack) {
  zuna_midi::SongData song("1", "Moon River", 480, 1440);
  song.timeline->tempos = {{0, 500000}, {480, 0xFFFFFF}};
  song.timeline->meters = {{0, 3, 4, 24, 8}, {480, 6, 128, 36, 8}};
  song.timeline->keys = {{0, -3, 1}};
  Report report;
  const smf::File file = ExportSong(song, report);
  EXPECT_EQ(file.format, 1);
  EXPECT_EQ(file.division, 480);
  ASSERT_EQ(file.tracks.size(), 1U);
  EXPECT_THAT(file.tracks[0].metas, ElementsAre(MetaEvent{0, smf::kTrackName, "Moon River"},
                                                MetaEvent{0, smf::kMeter, B("\x03\x02\x18\x08")},
                                                MetaEvent{0, smf::kKey, B("\xFD\x01")},
                                                MetaEvent{0, smf::kTempo, B("\x07\xA1\x20")},
                                                MetaEvent{480, smf::kMeter, B("\x06\x07\x24\x08")},
                                                MetaEvent{480, smf::kTempo, B("\xFF\xFF\xFF")}));
  EXPECT_EQ(file.tracks[0].end, 1440U);
  EXPECT_TRUE(report.not_kept.empty());
}

TEST(MidiExport, MakesATrackOfEveryVoice) {
  zuna_midi::SongData song("1", "", 480, 100);
  AddVoice(song, 1, "Piano")->messages = {{0, {0x90, 60, 100}}, {480, {0x80, 60, 0}}};
  AddVoice(song, 2, "")->messages = {{5, {0xC1, 7, 0}}};
  Report report;
  const smf::File file = ExportSong(song, report);
  ASSERT_EQ(file.tracks.size(), 3U);
  EXPECT_THAT(file.tracks[0].metas, IsEmpty());
  EXPECT_THAT(file.tracks[1].metas, ElementsAre(MetaEvent{0, smf::kTrackName, "Piano"}));
  EXPECT_THAT(file.tracks[1].messages,
              ElementsAre(Pair(0, VoiceMessage(0x90, 60, 100)), Pair(480, VoiceMessage(0x80, 60, 0))));
  EXPECT_EQ(file.tracks[1].end, 480U);
  EXPECT_THAT(file.tracks[2].metas, IsEmpty());
  EXPECT_EQ(file.tracks[2].end, 100U);
  EXPECT_TRUE(report.not_kept.empty());
}

TEST(MidiExport, SortsMessagesByTime) {
  zuna_midi::SongData song("1", "", 480, 0);
  AddVoice(song, 1, "")->messages = {{9, {0x90, 1, 1}}, {0, {0x90, 2, 1}}, {9, {0x90, 3, 1}}};
  Report report;
  EXPECT_THAT(ExportSong(song, report).tracks[1].messages,
              ElementsAre(Pair(0, VoiceMessage(0x90, 2, 1)), Pair(9, VoiceMessage(0x90, 1, 1)),
                          Pair(9, VoiceMessage(0x90, 3, 1))));
  EXPECT_THAT(report.remarks,
              ElementsAre("the messages of voice 1 were out of order and are sorted by time"));
}

TEST(MidiExport, CountsTimelineEntriesThatMidiCannotHold) {
  zuna_midi::SongData song("1", "", 480, 0);
  song.timeline->tempos = {{0, 0x1000000}, {0x10000000, 500000}};
  song.timeline->meters = {{0, 4, 3, 24, 8}, {0, 4, 0, 24, 8}, {0, 0, 4, 24, 8}};
  song.timeline->keys = {{0, 8, 0}, {0, -8, 0}, {0, 0, 2}, {0, -7, 1}};
  song.timeline->bars_beats.resize(2);
  song.timeline->page_numbers.resize(1);
  Report report;
  EXPECT_THAT(ExportSong(song, report).tracks[0].metas, ElementsAre(MetaEvent{0, smf::kKey, B("\xF9\x01")}));
  EXPECT_EQ(report.not_kept.ToString(),
            "3 meters with the numerator 0 or a denominator that is no power of two, "
            "3 keys that MIDI does not know, 1 tempo of more than 16777215 microseconds, "
            "1 event more than 268435455 ticks after the one before, 2 bar labels, 1 page number");
}

TEST(MidiExport, CountsMessagesThatMidiCannotHold) {
  zuna_midi::SongData song("1", "", 480, 0);
  const auto voice = AddVoice(song, 3, "");
  voice->reserved = 0;
  voice->messages = {{0, {0x7F, 1, 1}},          {0, {0xF0, 1, 1}},         {0, {0x90, 128, 1}},
                     {0, {0x90, 1, 128}},        {0, {0xC0, 1, 9}},         {0, {0xD0, 1, 200}},
                     {0x0FFFFFFF, {0x90, 1, 1}}, {0x1FFFFFFF, {0x90, 1, 0}}};
  Report report;
  EXPECT_EQ(ExportSong(song, report).tracks[1].messages.size(), 3U);
  EXPECT_EQ(report.not_kept.ToString(),
            "4 messages that MIDI does not know, 2 second data bytes of messages that have only one, "
            "1 event more than 268435455 ticks after the one before, 1 voice number, 1 reserved field");
}

TEST(MidiExport, CountsAnEndThatIsTooFarAway) {
  zuna_midi::SongData song("1", "", 480, 0xFFFFFFFF);
  Report report;
  const smf::File file = ExportSong(song, report);
  EXPECT_EQ(file.tracks[0].end, smf::kMaxQuantity);
  EXPECT_EQ(report.not_kept.ToString(), "1 end of a track more than 268435455 ticks after its last event");
  EXPECT_FALSE(smf::Write(file).empty());
}

std::string ErrorOf(const zuna_midi::SongData& song) {
  Report report;
  try {
    ExportSong(song, report);
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

TEST(MidiExport, RefusesDivisionsThatMidiCannotHold) {
  EXPECT_EQ(ErrorOf(zuna_midi::SongData("1", "", 0, 0)),
            "a quarter note has 0 ticks, and a MIDI file holds 1 to 32767; change the song's division");
  EXPECT_EQ(ErrorOf(zuna_midi::SongData("1", "", 32768, 0)),
            "a quarter note has 32768 ticks, and a MIDI file holds 1 to 32767; change the song's division");
  EXPECT_EQ(ErrorOf(zuna_midi::SongData("1", "", 32767, 0)), "(no error)");
}

TEST(MidiExport, RefusesMoreVoicesThanTracks) {
  zuna_midi::SongData song("1", "", 480, 0);
  for (unsigned number = 0; number < 65535; ++number) {
    AddVoice(song, static_cast<std::uint16_t>(number), "");
  }
  EXPECT_EQ(ErrorOf(song), "it has 65535 voices, and a MIDI file holds 65534; remove some of them");
}

TEST(MidiExport, GivesBackWhatWasImported) {
  const std::string first = B("\x00\xFF\x03\x04Song\x00\xFF\x58\x04\x03\x02\x18\x08") +
                            B("\x00\xFF\x51\x03\x07\xA1\x20\x8B\x20\xFF\x2F\x00");
  const std::string second =
      B("\x00\xFF\x03\x05Piano\x00\xC0\x05\x00\x90\x3C\x64\x83\x60\x80\x3C\x00") + B("\x87\x40\xFF\x2F\x00");
  const std::string bytes = smf::Header(1, 2) + smf::TrackChunk(first) + smf::TrackChunk(second);
  Report report;
  const auto song = ImportSong(smf::ReadText(bytes), "1", "", report);
  EXPECT_EQ(smf::Write(ExportSong(*song, report)), bytes);
  EXPECT_EQ(report.not_kept.ToString(), "1 bar label");
}

}  // namespace
}  // namespace zuna_toolkit::midi
