// A MIDI channel-voice message as text.

#include "std_midi/voice_message.h"

#include <ostream>

#include "kit/format.h"

namespace std_midi {

namespace {

struct Kind {
  const char* name;
  int data_bytes;
};

/// The channel-voice messages in the order of their status nibbles, 0x8 to 0xE.
constexpr Kind kKinds[] = {{"Note Off", 2},       {"Note On", 2},        {"Key Pressure", 2},
                           {"Control Change", 2}, {"Program Change", 1}, {"Channel Pressure", 1},
                           {"Pitch Bend", 2}};

}  // namespace

void VoiceMessage::WriteString(std::ostream& os) const {
  const int high = status >> 4;
  if (high < 0x8 || high > 0xE) {
    os << kit::format("Message(%d, %d, %d)", status, data1, data2);
    return;
  }
  const Kind& kind = kKinds[high - 0x8];
  os << kit::format("%s(channel %d, %d", kind.name, (status & 0x0F) + 1, data1);
  if (kind.data_bytes == 2) os << kit::format(", %d", data2);
  os << ')';
}

}  // namespace std_midi
