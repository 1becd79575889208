// Checks the messages of voices.
#include "kit/format.h"
#include "toolkit/checking/internal/check_models.h"
#include "toolkit/checking/internal/voice_check.h"
#include "toolkit/smf/file.h"

namespace zuna_toolkit {

void VoiceCheck::Add(std::uint32_t time, const std_midi::VoiceMessage& message) {
  CheckTime(time);
  if (CheckBytes(time, message)) notes_.Add(index_, time, message);
  before_ = time;
  ++index_;
}

void VoiceCheck::CheckTime(std::uint32_t time) const {
  if (time < before_) {
    findings_.Add(FindingCode::kMessageOutOfOrder,
                  MessageText(time) + " is after the one at " + std::to_string(before_), At(index_, time));
  }
  if (IsBeyond(time, song_length_)) {
    findings_.Add(FindingCode::kMessageBeyondEnd,
                  MessageText(time) + " is after the end of the song at " + std::to_string(song_length_),
                  At(index_, time));
  }
}

bool VoiceCheck::CheckBytes(std::uint32_t time, const std_midi::VoiceMessage& message) const {
  if (!smf::IsChannelStatus(message.status)) {
    findings_.Add(FindingCode::kStatusInvalid,
                  MessageText(time) + kit::format(" has the status 0x%02X", message.status),
                  At(index_, time));
    return false;
  }
  if (smf::HasDataBytes(message)) return true;
  const bool second = smf::DataBytes(message.status) == 2;
  findings_.Add(
      FindingCode::kDataByteInvalid,
      MessageText(time) + (second ? kit::format(" has the data bytes %u and %u", message.data1, message.data2)
                                  : kit::format(" has the data byte %u", message.data1)),
      At(index_, time));
  return false;
}

void VoiceCheck::End() {
  notes_.EndAll([&](std::size_t channel, std::size_t number, const SoundingNotes::Key& key) {
    findings_.Add(FindingCode::kNoteLeftOn,
                  kit::format("note %zu of voice %u on channel %zu is left on; it begins at %u", number,
                              voice_, channel + 1, key.tick),
                  At(key.index, key.tick));
  });
}

}  // namespace zuna_toolkit
