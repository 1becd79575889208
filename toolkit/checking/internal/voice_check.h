// Checks the messages of one voice, current and legacy ones alike.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "std_midi/voice_message.h"
#include "toolkit/checking/internal/song_findings.h"
#include "toolkit/checking/internal/sounding_notes.h"

namespace zuna_toolkit {

/// Checks the messages of one voice, which are given one after the other.
class VoiceCheck {
 public:
  /// No note of `notes` sounds.
  VoiceCheck(std::uint16_t voice, std::uint32_t song_length, SoundingNotes& notes,
             const SongFindings& findings)
      : voice_(voice), song_length_(song_length), notes_(notes), findings_(findings) {}

  /// The next message of the voice, at `time` ticks.
  void Add(std::uint32_t time, const std_midi::VoiceMessage& message);

  /// Adds the notes that did not end.
  void End();

 private:
  /// The message with this index.
  Place At(std::size_t index, std::uint32_t tick) const {
    return {.list = "messages", .index = index, .tick = tick, .voice = voice_};
  }
  std::string MessageText(std::uint32_t tick) const {
    return "the message of voice " + std::to_string(voice_) + " at " + std::to_string(tick);
  }
  void CheckTime(std::uint32_t time) const;
  /// Whether the message can be sent.
  bool CheckBytes(std::uint32_t time, const std_midi::VoiceMessage& message) const;

  std::uint16_t voice_;
  std::uint32_t song_length_;
  SoundingNotes& notes_;
  const SongFindings& findings_;
  std::size_t index_ = 0;     ///< of the message that is being checked
  std::uint32_t before_ = 0;  ///< the time of the message before
};

}  // namespace zuna_toolkit
