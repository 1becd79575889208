// Which notes sound at a point of a voice.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "std_midi/voice_message.h"

namespace zuna_toolkit {

/// A counter for each key of each channel. Voices use it one after the other, since it costs more to make
/// than most voices are long.
class SoundingNotes {
 public:
  static constexpr std::size_t kChannels = 16;
  static constexpr std::size_t kKeys = 128;

  /// A key of a channel.
  struct Key {
    std::uint32_t sounding = 0;  ///< note-ons without a note-off
    std::uint32_t tick = 0;      ///< of the last note-on
    std::size_t index = 0;       ///< of the last note-on, in its voice
  };

  /// Takes a channel message with data bytes up to 127.
  void Add(std::size_t index, std::uint32_t tick, const std_midi::VoiceMessage& message);

  /// Calls `take(channel, number, key)` for the keys that sound, and ends them.
  template <typename Take>
  void EndAll(Take take) {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
      if (channels_.at(channel).sounding == 0) continue;
      for (std::size_t number = 0; number < kKeys; ++number) {
        const Key& key = channels_.at(channel).keys.at(number);
        if (key.sounding != 0) take(channel, number, key);
      }
      channels_.at(channel) = {};
    }
  }

 private:
  /// A channel.
  struct Channel {
    std::size_t sounding = 0;  ///< of all keys
    std::array<Key, kKeys> keys{};
  };

  std::array<Channel, kChannels> channels_{};
};

}  // namespace zuna_toolkit
