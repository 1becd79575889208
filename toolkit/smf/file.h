// Standard MIDI Files: plain data, reader and writer (docs/midi.md).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "kit/api.h"
#include "std_midi/voice_message.h"
#include "toolkit/error.h"

/// Standard MIDI Files 1.0 (MIDI Manufacturers Association, RP-001) as plain data.
namespace zuna_toolkit::smf {

/// The meta events that the toolkit knows by name.
enum Meta : std::uint8_t {
  kSequenceNumber = 0x00,
  kText = 0x01,
  kCopyright = 0x02,
  kTrackName = 0x03,
  kInstrumentName = 0x04,
  kLyric = 0x05,
  kMarker = 0x06,
  kCuePoint = 0x07,
  kProgramName = 0x08,
  kDeviceName = 0x09,
  kChannelPrefix = 0x20,
  kPort = 0x21,
  kEndOfTrack = 0x2F,
  kTempo = 0x51,
  kSmpteOffset = 0x54,
  kMeter = 0x58,
  kKey = 0x59,
  kSequencerSpecific = 0x7F,
};

constexpr std::uint8_t kMetaStatus = 0xFF;      ///< begins a meta event
constexpr std::uint8_t kSysexStatus = 0xF0;     ///< begins a system-exclusive message
constexpr std::uint8_t kSysexContinued = 0xF7;  ///< continues a system-exclusive message

constexpr std::uint8_t kKindMask = 0xF0;     ///< of the status of a channel message: what kind it is of
constexpr std::uint8_t kChannelMask = 0x0F;  ///< of the status of a channel message: its channel, from 0

/// Kinds of channel messages, as kKindMask leaves them.
///@{
constexpr std::uint8_t kNoteOff = 0x80;
constexpr std::uint8_t kNoteOn = 0x90;  ///< ends a note where its velocity is 0
constexpr std::uint8_t kControlChange = 0xB0;
constexpr std::uint8_t kProgramChange = 0xC0;
///@}

/// The largest variable-length quantity: 4 bytes of 7 bits.
constexpr std::uint32_t kMaxQuantity = 0x0FFFFFFF;

/// The number of data bytes of a channel message: 1 for program changes and channel pressures, else 2.
constexpr int DataBytes(std::uint8_t status) { return (status & 0xE0) == 0xC0 ? 1 : 2; }

constexpr std::uint8_t kStatusBit = 0x80;  ///< which every status has and no data byte

/// Whether `status` is that of a channel message: 0x80 to 0xEF.
constexpr bool IsChannelStatus(std::uint8_t status) { return status >= kStatusBit && status < kSysexStatus; }

/// Whether the data bytes of a channel message are below 0x80. Where it has only one, the other byte may be
/// any.
inline bool HasDataBytes(const std_midi::VoiceMessage& message) {
  if (message.data1 >= kStatusBit) return false;
  return DataBytes(message.status) == 1 || message.data2 < kStatusBit;
}

/// Whether `message` is a channel message with its data bytes.
inline bool IsChannelMessage(const std_midi::VoiceMessage& message) {
  return IsChannelStatus(message.status) && HasDataBytes(message);
}

/// A meta event but End of Track, at `time` ticks from the start of the track.
struct MetaEvent {
  std::uint32_t time = 0;  ///< ticks
  std::uint8_t type = 0;   ///< one of the types above, or any other
  std::string data;        ///< its bytes

  bool operator==(const MetaEvent&) const = default;
};

/// One track chunk. All times are ticks from the start of the track, in ascending order.
struct Track {
  std::vector<std::pair<std::uint32_t, std_midi::VoiceMessage>> messages;  ///< with their times
  std::vector<MetaEvent> metas;                                            ///< without End of Track
  std::uint32_t end = 0;        ///< when the End of Track stands, or the last event where there is none
  std::size_t sysex_count = 0;  ///< system-exclusive messages and their continuations; they are not kept

  bool operator==(const Track&) const = default;
};

/// A whole file of format 0 or 1.
struct File {
  std::uint16_t format = 1;    ///< 0 or 1
  std::uint16_t division = 0;  ///< ticks of a quarter note, 1 to 32767
  std::vector<Track> tracks;   ///< in the order of the file
};

/// What a reader tolerated.
struct ReadNotes {
  std::size_t declared_tracks = 0;         ///< the track count of the header
  std::size_t unknown_chunks = 0;          ///< skipped
  std::size_t missing_ends = 0;            ///< tracks without an End of Track
  std::size_t bytes_after_end = 0;         ///< bytes in track chunks after their End of Track
  std::size_t bytes_after_last_chunk = 0;  ///< too few to be a chunk
};

/// Reads a Standard MIDI File of format 0 or 1 with a division in ticks of a quarter note. Any bytes may be
/// given; memory stays within a small multiple of them. Throws Error (ErrorKind::kBadInput) with the offset
/// in bytes and without a file.
ZUNA_API File Read(std::span<const std::uint8_t> bytes, ReadNotes& notes);

/// The bytes of `file`: a header and its tracks, each event with its own status byte. At equal times meta
/// events come before messages. Delta times are at most kMaxQuantity, statuses 0x80 to 0xEF and data bytes
/// below 0x80. Throws std::length_error where a count or length does not fit its field.
ZUNA_API std::string Write(const File& file);

}  // namespace zuna_toolkit::smf
