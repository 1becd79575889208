// The notes of a voice.
#include <algorithm>
#include <array>

#include "kit/format.h"
#include "toolkit/comparison/internal/fields.h"
#include "toolkit/comparison/internal/notes.h"
#include "toolkit/smf/file.h"

namespace zuna_toolkit {

namespace {

bool BeginsNote(const std_midi::VoiceMessage& message) {
  return (message.status & smf::kKindMask) == smf::kNoteOn && message.data2 != 0;
}

bool IsOfNote(const std_midi::VoiceMessage& message) {
  const unsigned kind = message.status & smf::kKindMask;
  return kind == smf::kNoteOn || kind == smf::kNoteOff;
}

/// A pitch of a channel.
unsigned KeyOf(const std_midi::VoiceMessage& message) {
  return (message.status & smf::kChannelMask) * 0x100U + message.data1;
}

Note NoteOf(const TimedMessage& on, const TimedMessage& off, std::size_t index) {
  Note note;
  note.tick = on.first;
  note.channel = on.second.status & smf::kChannelMask;
  note.pitch = on.second.data1;
  note.velocity = on.second.data2;
  note.release_kind = off.second.status & smf::kKindMask;
  note.release_velocity = off.second.data2;
  note.length = off.first - on.first;
  note.index = index;
  return note;
}

/// "C4 (60)"
std::string PitchText(std::uint8_t pitch) {
  constexpr std::array<const char*, 12> kNames = {"C",  "C#", "D",  "D#", "E",  "F",
                                                  "F#", "G",  "G#", "A",  "A#", "B"};
  constexpr int kPitches = 128;
  constexpr int kLowestOctave = -1;
  const int octave = pitch / static_cast<int>(kNames.size()) + kLowestOctave;
  const std::string number = kit::format("(%u)", pitch);
  return pitch < kPitches ? kNames.at(pitch % kNames.size()) + kit::format("%d ", octave) + number : number;
}

/// The places of all messages of notes, those of one pitch and channel together, in their order.
std::vector<std::size_t> PlacesByKey(const std::vector<TimedMessage>& messages) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (IsOfNote(messages[i].second)) places.push_back(i);
  }
  std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
    return KeyOf(messages[a].second) < KeyOf(messages[b].second);
  });
  return places;
}

}  // namespace

VoiceParts PartsOf(const std::vector<TimedMessage>& messages) {
  VoiceParts parts;
  std::vector<bool> is_of_note(messages.size());
  std::vector<std::size_t> open;  // note-ons of one pitch and channel
  std::size_t first_open = 0;
  const std::vector<std::size_t> places = PlacesByKey(messages);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const TimedMessage& message = messages[places[i]];
    if (i > 0 && KeyOf(messages[places[i - 1]].second) != KeyOf(message.second)) {
      open.clear();
      first_open = 0;
    }
    if (BeginsNote(message.second)) {
      open.push_back(places[i]);
    } else if (first_open < open.size() && messages[open[first_open]].first <= message.first) {
      const std::size_t on = open[first_open++];
      parts.notes.push_back(NoteOf(messages[on], message, on));
      is_of_note[on] = is_of_note[places[i]] = true;
    }
  }
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (is_of_note[i]) continue;
    parts.others.push_back(messages[i]);
    parts.places.push_back(i);
  }
  return parts;
}

std::string NoteText(const Note& note, const Note* other) {
  std::string text = PitchText(note.pitch);
  const auto add = [&](const char* field, unsigned value, unsigned other_value) {
    if (other == nullptr || value != other_value) text += kit::format(" %s %u", field, value);
  };
  const Note& compared = other == nullptr ? note : *other;
  add("velocity", note.velocity, compared.velocity);
  add("length", note.length, compared.length);
  add("channel", note.channel + 1U, compared.channel + 1U);
  if (note.release_kind != compared.release_kind) {
    return text + (note.release_kind == smf::kNoteOn ? " ended by a note-on" : " ended by a note-off");
  }
  if (note.release_kind == smf::kNoteOff) add("release", note.release_velocity, compared.release_velocity);
  return text;
}

std::vector<FieldChange> ChangesOfNote(const Note& before, const Note& after) {
  const auto fields = [](const Note& note) {
    const char* end = note.release_kind == smf::kNoteOn ? "note-on" : "note-off";
    return std::vector<Field>{{"pitch", note.pitch},
                              {"velocity", note.velocity},
                              {"length", note.length},
                              {"end", std::string_view(end)},
                              {"release", note.release_velocity}};
  };
  return ChangesOf(fields(before), fields(after));
}

}  // namespace zuna_toolkit
