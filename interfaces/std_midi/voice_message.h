#pragma once

// A MIDI channel-voice message.

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace std_midi {

/// A MIDI channel-voice message (MIDI 1.0): the status byte with its channel nibble, and two data bytes (the
/// second is 0 where the message has only one). Holds any three bytes without a check.
struct ZUNA_API VoiceMessage {
  std::uint8_t status = 0;  ///< kind and channel
  std::uint8_t data1 = 0;   ///< the first data byte
  std::uint8_t data2 = 0;   ///< the second data byte

  VoiceMessage() = default;
  /// A message of these three bytes.
  VoiceMessage(unsigned char status_byte, unsigned char first, unsigned char second)
      : status(status_byte), data1(first), data2(second) {}

  /// Writes the message as text for a person: its kind, its channel from 1 to 16, and its data bytes as
  /// decimal numbers, as in "Program Change(channel 1, 12)" or "Note On(channel 10, 36, 100)". A status byte
  /// that begins no channel-voice message gives "Message(240, 1, 2)". Leaves the stream's format flags as
  /// they were.
  void WriteString(std::ostream& os) const;

  bool operator==(const VoiceMessage&) const = default;
};

}  // namespace std_midi
