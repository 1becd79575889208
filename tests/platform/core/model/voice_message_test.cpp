// A MIDI message as text.

#include "std_midi/voice_message.h"

#include <gtest/gtest.h>

#include <ios>
#include <sstream>

namespace {

std::string Text(const std_midi::VoiceMessage& message) {
  std::ostringstream os;
  message.WriteString(os);
  return os.str();
}

TEST(VoiceMessage, PrintsEachKind) {
  EXPECT_EQ(Text({0x80, 60, 64}), "Note Off(channel 1, 60, 64)");
  EXPECT_EQ(Text({0x99, 36, 100}), "Note On(channel 10, 36, 100)");
  EXPECT_EQ(Text({0xA1, 60, 1}), "Key Pressure(channel 2, 60, 1)");
  EXPECT_EQ(Text({0xB2, 7, 127}), "Control Change(channel 3, 7, 127)");
  EXPECT_EQ(Text({0xC0, 12, 0}), "Program Change(channel 1, 12)");
  EXPECT_EQ(Text({0xDF, 99, 0}), "Channel Pressure(channel 16, 99)");
  EXPECT_EQ(Text({0xE0, 0, 64}), "Pitch Bend(channel 1, 0, 64)");
}

TEST(VoiceMessage, PrintsWhatIsNoChannelVoiceMessage) {
  EXPECT_EQ(Text({0xF0, 1, 2}), "Message(240, 1, 2)");
  EXPECT_EQ(Text({0x00, 1, 2}), "Message(0, 1, 2)");
}

TEST(VoiceMessage, PrintsDecimalNumbersOnAnyStream) {
  std::ostringstream os;
  os << std::hex << std::showbase;
  std_midi::VoiceMessage(0xC0, 12, 0).WriteString(os);
  os << 255;
  EXPECT_EQ(os.str(), "Program Change(channel 1, 12)0xff");
}

}  // namespace
