#include "toolkit/smf/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/toolkit/smf/smf_bytes.h"

namespace zuna_toolkit::smf {
namespace {

TEST(SmfWriter, WritesEveryFieldOfAFile) {
  File file;
  file.division = 480;
  Track track;
  track.metas = {{0, kTrackName, "Bass"}, {480, kTempo, B("\x07\xA1\x20")}};
  track.messages = {{480, {0xC1, 32, 99}}, {480, {0x91, 60, 100}}, {609, {0x81, 60, 64}}};
  track.end = 609 + 0x0FFFFFFF;
  file.tracks.push_back(track);
  EXPECT_EQ(Write(file), Join({
                             B("MThd"),                              // chunk type
                             B("\x00\x00\x00\x06"),                  // length
                             B("\x00\x01"),                          // format 1
                             B("\x00\x01"),                          // 1 track
                             B("\x01\xE0"),                          // 480 ticks of a quarter note
                             B("MTrk"),                              // chunk type
                             B("\x00\x00\x00\x23"),                  // length 8 + 8 + 3 + 4 + 5 + 7
                             B("\x00\xFF\x03\x04") + "Bass",         // at 0: track name
                             B("\x83\x60\xFF\x51\x03\x07\xA1\x20"),  // at 480: tempo
                             B("\x00\xC1\x20"),                      // program change: one data byte
                             B("\x00\x91\x3C\x64"),                  // note on
                             B("\x81\x01\x81\x3C\x40"),              // 129 later: note off
                             B("\xFF\xFF\xFF\x7F\xFF\x2F\x00"),      // End of Track
                         }));
}

TEST(IsChannelMessage, TellsStatusesAndDataBytes) {
  for (const std_midi::VoiceMessage& message : {std_midi::VoiceMessage{0x80, 0, 0},
                                                {0xEF, 0x7F, 0x7F},
                                                {0xC0, 0x7F, 0x80},  // which has one data byte
                                                {0xDF, 0x7F, 0xFF}}) {
    EXPECT_TRUE(IsChannelMessage(message)) << int{message.status};
  }
  for (const std_midi::VoiceMessage& message : {std_midi::VoiceMessage{0x7F, 0, 0},
                                                {0xF0, 0, 0},
                                                {0x90, 0x80, 0},
                                                {0x90, 0, 0x80},
                                                {0xC0, 0x80, 0},
                                                {0xE0, 0, 0x80}}) {
    EXPECT_FALSE(IsChannelMessage(message)) << int{message.status};
  }
}

TEST(SmfWriter, RefusesWhatDoesNotFit) {
  File file;
  file.tracks.resize(1);
  file.tracks[0].end = 0x10000000;
  try {
    Write(file);
    FAIL() << "nothing was thrown";
  } catch (const std::length_error& error) {
    EXPECT_STREQ(error.what(), "a MIDI file cannot hold the quantity 268435456");
  }
  file.tracks.assign(65536, Track{});
  try {
    Write(file);
    FAIL() << "nothing was thrown";
  } catch (const std::length_error& error) {
    EXPECT_STREQ(error.what(), "a MIDI file cannot hold more than 65535 tracks");
  }
}

class RandomFile {
 public:
  explicit RandomFile(unsigned seed) : random_(seed) {}

  File Make() {
    File file;
    file.format = static_cast<std::uint16_t>(Below(2));
    file.division = static_cast<std::uint16_t>(1 + Below(32767));
    for (unsigned count = Below(5); count > 0; --count) file.tracks.push_back(MakeTrack());
    return file;
  }

 private:
  unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

  Track MakeTrack() {
    Track track;
    std::uint32_t time = 0;
    for (unsigned count = Below(20); count > 0; --count) {
      time += Below(4) == 0 ? Below(kMaxQuantity) / 32 : Below(3);
      if (Below(4) == 0) {
        track.metas.push_back({time, static_cast<std::uint8_t>(Below(0x2F)), std::string(Below(300), 'x')});
        continue;
      }
      std_midi::VoiceMessage message;
      message.status = static_cast<std::uint8_t>(0x80 + Below(0x70));
      message.data1 = static_cast<std::uint8_t>(Below(0x80));
      if (DataBytes(message.status) == 2) message.data2 = static_cast<std::uint8_t>(Below(0x80));
      track.messages.emplace_back(time, message);
    }
    track.end = time + Below(1000);
    return track;
  }

  std::mt19937 random_;
};

TEST(SmfWriter, WritesWhatTheReaderReads) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    const File file = RandomFile(seed).Make();
    const File read = ReadText(Write(file));
    EXPECT_EQ(read.format, file.format) << seed;
    EXPECT_EQ(read.division, file.division) << seed;
    EXPECT_TRUE(read.tracks == file.tracks) << seed;
  }
}

}  // namespace
}  // namespace zuna_toolkit::smf
