// Which notes sound at a point of a voice.
#include "toolkit/checking/internal/sounding_notes.h"

#include "toolkit/smf/file.h"

namespace zuna_toolkit {

namespace {

constexpr std::uint8_t kAllSoundOff = 120;    ///< a controller that ends the notes of its channel
constexpr std::uint8_t kFirstNotesOff = 123;  ///< so do this one and those after it

bool EndsAllNotes(std::uint8_t controller) {
  return controller == kAllSoundOff || controller >= kFirstNotesOff;
}

}  // namespace

void SoundingNotes::Add(std::size_t index, std::uint32_t tick, const std_midi::VoiceMessage& message) {
  const std::uint8_t kind = message.status & smf::kKindMask;
  Channel& channel = channels_.at(message.status & smf::kChannelMask);
  Key& key = channel.keys.at(message.data1);
  if (kind == smf::kNoteOn && message.data2 != 0) {
    key = {key.sounding + 1, tick, index};
    ++channel.sounding;
  } else if (kind == smf::kNoteOn || kind == smf::kNoteOff) {
    if (key.sounding == 0) return;
    --key.sounding;
    --channel.sounding;
  } else if (kind == smf::kControlChange && EndsAllNotes(message.data1) && channel.sounding != 0) {
    channel = {};
  }
}

}  // namespace zuna_toolkit
