// Writes Standard MIDI Files (docs/midi.md).
#include <limits>
#include <stdexcept>

#include "toolkit/smf/file.h"

namespace zuna_toolkit::smf {

namespace {

void PutNumber(std::string& out, std::uint32_t value, int count) {
  for (int shift = (count - 1) * 8; shift >= 0; shift -= 8) out.push_back(static_cast<char>(value >> shift));
}

void PutQuantity(std::string& out, std::uint32_t value) {
  if (value > kMaxQuantity)
    throw std::length_error("a MIDI file cannot hold the quantity " + std::to_string(value));
  for (int shift = 21; shift > 0; shift -= 7) {
    if (value >> shift != 0) out.push_back(static_cast<char>((value >> shift & 0x7F) | 0x80));
  }
  out.push_back(static_cast<char>(value & 0x7F));
}

void PutMeta(std::string& out, std::uint8_t type, const std::string& data) {
  out.push_back(static_cast<char>(kMetaStatus));
  out.push_back(static_cast<char>(type));
  if (data.size() > kMaxQuantity) throw std::length_error("a MIDI file cannot hold so long a text");
  PutQuantity(out, static_cast<std::uint32_t>(data.size()));
  out += data;
}

void PutMessage(std::string& out, const std_midi::VoiceMessage& message) {
  out.push_back(static_cast<char>(message.status));
  out.push_back(static_cast<char>(message.data1));
  if (DataBytes(message.status) == 2) out.push_back(static_cast<char>(message.data2));
}

std::string TrackBody(const Track& track) {
  std::string out;
  std::uint32_t now = 0;
  const auto advance = [&](std::uint32_t time) {
    PutQuantity(out, time - now);
    now = time;
  };
  auto meta = track.metas.begin();
  const auto put_metas_until = [&](std::uint32_t time) {
    for (; meta != track.metas.end() && meta->time <= time; ++meta) {
      advance(meta->time);
      PutMeta(out, meta->type, meta->data);
    }
  };
  for (const auto& [time, message] : track.messages) {
    put_metas_until(time);
    advance(time);
    PutMessage(out, message);
  }
  put_metas_until(std::numeric_limits<std::uint32_t>::max());
  advance(track.end);
  PutMeta(out, kEndOfTrack, "");
  return out;
}

void PutTrack(std::string& out, const Track& track) {
  const std::string body = TrackBody(track);
  if (body.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("a MIDI file cannot hold a track of more than 4 GiB");
  }
  out += "MTrk";
  PutNumber(out, static_cast<std::uint32_t>(body.size()), 4);
  out += body;
}

}  // namespace

std::string Write(const File& file) {
  if (file.tracks.size() > std::numeric_limits<std::uint16_t>::max()) {
    throw std::length_error("a MIDI file cannot hold more than 65535 tracks");
  }
  std::string out = "MThd";
  PutNumber(out, 6, 4);
  PutNumber(out, file.format, 2);
  PutNumber(out, static_cast<std::uint32_t>(file.tracks.size()), 2);
  PutNumber(out, file.division, 2);
  for (const Track& track : file.tracks) PutTrack(out, track);
  return out;
}

}  // namespace zuna_toolkit::smf
