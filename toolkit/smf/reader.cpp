// Reads Standard MIDI Files (docs/midi.md).
#include "toolkit/smf/file.h"

#include <limits>
#include <string>
#include <string_view>

#include "toolkit/smf/internal/byte_cursor.h"
#include "toolkit/words.h"

namespace zuna_toolkit::smf {

namespace {

constexpr std::size_t kChunkHeader = 4 + 4;  // type, length
constexpr std::uint32_t kSmallestHeader = 2 + 2 + 2;
constexpr std::uint16_t kSmpteBit = 0x8000;
constexpr std::size_t kFormatOffset = 4 + 4;            // type, length
constexpr std::size_t kDivisionOffset = 4 + 4 + 2 + 2;  // type, length, format, number of tracks

void CheckDivision(std::uint16_t division) {
  if ((division & kSmpteBit) != 0) {
    throw DamageAt(ErrorCode::kUnsupportedMidi, kDivisionOffset, "times are in SMPTE frames",
                   "export the file with ticks of a quarter note instead");
  }
  if (division == 0) {
    throw DamageAt(ErrorCode::kUnsupportedMidi, kDivisionOffset, "a quarter note has 0 ticks",
                   "export the file with another resolution");
  }
}

/// Reads the header chunk: "MThd", length, format, number of tracks, division.
File ReadHeader(ByteCursor& cursor, ReadNotes& notes) {
  if (cursor.left() < 4 || AsText(cursor.Take(4)) != "MThd") {
    throw DamageAt(ErrorCode::kNotAMidiFile, 0, "not a Standard MIDI File: it does not begin with \"MThd\"",
                   "give a .mid file");
  }
  const std::uint32_t length = cursor.Number(4);
  if (length < kSmallestHeader) cursor.Fail("the header has " + std::to_string(length) + " bytes, not 6");
  const std::size_t rest = length - kSmallestHeader;
  File file;
  file.format = static_cast<std::uint16_t>(cursor.Number(2));
  if (file.format > 1) {
    throw DamageAt(ErrorCode::kUnsupportedMidi, kFormatOffset,
                   "format " + std::to_string(file.format) + " is not supported",
                   "export the file as format 0 or 1");
  }
  notes.declared_tracks = cursor.Number(2);
  file.division = static_cast<std::uint16_t>(cursor.Number(2));
  CheckDivision(file.division);
  cursor.Take(rest);  // A later revision may put more into the header.
  return file;
}

/// Reads the events of one track chunk.
class TrackReader {
 public:
  explicit TrackReader(ByteCursor cursor) : cursor_(cursor) {}

  Track Read(ReadNotes& notes) {
    while (!cursor_.empty() && !ended_) {
      Advance(cursor_.Quantity());
      ReadEvent();
    }
    if (!ended_) ++notes.missing_ends;
    notes.bytes_after_end += cursor_.left();
    track_.end = time_;
    return std::move(track_);
  }

 private:
  void Advance(std::uint32_t delta) {
    if (delta > std::numeric_limits<std::uint32_t>::max() - time_) {
      cursor_.Fail("the time is beyond 4294967295 ticks");
    }
    time_ += delta;
  }

  void ReadEvent() {
    const std::uint8_t next = cursor_.Peek();
    if (next == kMetaStatus) {
      cursor_.Byte();
      ReadMeta();
    } else if (next == kSysexStatus || next == kSysexContinued) {
      cursor_.Byte();
      cursor_.Take(cursor_.Quantity());
      ++track_.sysex_count;
      running_status_ = 0;
    } else if (next > kSysexStatus) {
      cursor_.Fail("status byte " + std::to_string(next) + " cannot stand in a file");
    } else {
      if (next >= kStatusBit) running_status_ = cursor_.Byte();
      ReadMessage();
    }
  }

  void ReadMeta() {
    running_status_ = 0;
    const std::uint8_t type = cursor_.Byte();
    const auto data = cursor_.Take(cursor_.Quantity());
    if (type == kEndOfTrack) {
      ended_ = true;
    } else {
      track_.metas.push_back({time_, type, std::string(AsText(data))});
    }
  }

  void ReadMessage() {
    if (running_status_ == 0) cursor_.Fail("a data byte stands where a status byte is expected");
    std_midi::VoiceMessage message;
    message.status = running_status_;
    message.data1 = ReadData();
    if (DataBytes(running_status_) == 2) message.data2 = ReadData();
    track_.messages.emplace_back(time_, message);
  }

  std::uint8_t ReadData() {
    if (cursor_.Peek() >= kStatusBit) cursor_.Fail("a status byte stands where a data byte is expected");
    return cursor_.Byte();
  }

  ByteCursor cursor_;
  Track track_;
  std::uint32_t time_ = 0;
  std::uint8_t running_status_ = 0;
  bool ended_ = false;
};

void CheckTrackCount(const File& file, const ReadNotes& notes, const ByteCursor& cursor) {
  if (file.tracks.size() >= notes.declared_tracks) return;
  throw DamageAt(ErrorCode::kCutOff, cursor.offset(),
                 "truncated: the header promises " + Counted(notes.declared_tracks, "track", "tracks") +
                     ", and the file has " + std::to_string(file.tracks.size()),
                 "get a complete copy of the file");
}

}  // namespace

File Read(std::span<const std::uint8_t> bytes, ReadNotes& notes) {
  notes = {};
  ByteCursor cursor(bytes, 0);
  File file = ReadHeader(cursor, notes);
  while (cursor.left() >= kChunkHeader) {
    const bool is_track = AsText(cursor.Take(4)) == "MTrk";
    const std::uint32_t length = cursor.Number(4);
    const std::size_t offset = cursor.offset();
    const auto body = cursor.Take(length);
    if (is_track) {
      file.tracks.push_back(TrackReader(ByteCursor(body, offset)).Read(notes));
    } else {
      ++notes.unknown_chunks;
    }
  }
  CheckTrackCount(file, notes, cursor);
  notes.bytes_after_last_chunk = cursor.left();
  return file;
}

}  // namespace zuna_toolkit::smf
