// The notes of a voice, and which of them differ from those of another one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "std_midi/voice_message.h"
#include "toolkit/comparison/difference.h"

namespace zuna_toolkit {

using TimedMessage = std::pair<std::uint32_t, std_midi::VoiceMessage>;

/// A note-on and the note-off that ends it: the first one after it that no earlier note of its pitch and
/// channel takes.
struct Note {
  std::uint32_t tick = 0;             ///< when it begins
  std::uint8_t channel = 0;           ///< from 0
  std::uint8_t pitch = 0;             ///< 60 is C4
  std::uint8_t velocity = 0;          ///< 1 or more
  std::uint8_t release_kind = 0;      ///< 0x80, or 0x90 for a note-on of velocity 0
  std::uint8_t release_velocity = 0;  ///< 0 where a note-on ends the note
  std::uint32_t length = 0;           ///< ticks
  std::size_t index = 0;              ///< of its note-on in the voice
};

/// The messages of a voice.
struct VoiceParts {
  std::vector<Note> notes;
  std::vector<TimedMessage> others;  ///< those of no note: a note-on without a note-off is one of them
  std::vector<std::size_t> places;   ///< of `others` in the voice
};

/// Takes O(n log n).
VoiceParts PartsOf(const std::vector<TimedMessage>& messages);

/// "C4 (60) velocity 100 length 480 channel 1 release 64"; with another note of this pitch, only the fields
/// in which this one differs.
std::string NoteText(const Note& note, const Note* other = nullptr);

/// Where a note stands, and what it is besides its start; the orders of lists of notes.
///@{
inline auto PlaceOf(const Note& note) { return std::tuple(note.tick, note.channel, note.pitch); }
inline auto ValuesOf(const Note& note) {
  return std::tuple(note.channel, note.pitch, note.velocity, note.length, note.release_kind,
                    note.release_velocity);
}
inline bool IsLess(const Note& a, const Note& b) {
  return a.tick != b.tick ? a.tick < b.tick : ValuesOf(a) < ValuesOf(b);
}
inline bool HasLessPlace(const Note& a, const Note& b) { return PlaceOf(a) < PlaceOf(b); }
///@}

/// What became of a note. One of the two may be missing.
struct NotePair {
  std::optional<Note> before;
  std::optional<Note> after;
};

/// How the notes of two voices differ.
struct NoteComparison {
  std::vector<NotePair> moved;       ///< have another start, perhaps other values or another pitch too
  std::vector<NotePair> changed;     ///< have the same pitch and start
  std::vector<NotePair> transposed;  ///< have the same start and another pitch, perhaps other values too
  std::vector<NotePair> dropped;
  std::vector<NotePair> added;
  bool in_parts = false;  ///< so many differ that moved ones were looked for in parts of the voice only

  /// Whether there are none.
  bool empty() const {
    return moved.empty() && changed.empty() && transposed.empty() && dropped.empty() && added.empty();
  }
};

/// The fields besides the start that differ.
std::vector<FieldChange> ChangesOfNote(const Note& before, const Note& after);

/// Which transposed notes are looked for.
enum class Transposed {
  kOnly,     ///< those that are the same but for the pitch
  kAndMore,  ///< those whose velocity, length or end may differ too
};

/// How many notes that change in one way are a run of them; fewer may do so by chance.
inline constexpr std::size_t kFewestOfARun = 4;

/// Takes out of two lists in the order of time, channel and pitch what was transposed: runs of chords that
/// move by one interval.
void TakeTransposedRuns(std::vector<Note>& before, std::vector<Note>& after, Transposed which,
                        std::vector<NotePair>& transposed);

/// Takes out of both lists the notes that are the same but for the pitch, and leaves the others in the order
/// of time.
void TakeOtherPitches(std::vector<Note>& before, std::vector<Note>& after, std::vector<NotePair>& transposed);

/// Takes out of both lists, which are in the order of time, channel and pitch, the notes of each start and
/// channel at which both have as many.
void TakeSameStarts(std::vector<Note>& before, std::vector<Note>& after, std::vector<NotePair>& transposed);

/// Takes the ends out of two sorted lists that moved as a whole: where time was inserted or cut out, the rest
/// of the voice moves. Perhaps it is transposed by one interval, or louder, at the same time.
void TakeMovedEnd(std::vector<Note>& lost, std::vector<Note>& gained, std::vector<NotePair>& moved);

/// Takes out of two lists in the order of time the notes that moved: a longest common subsequence of the
/// pitches. Where there are too many notes, it is searched in parts of the lists.
void TakeMovedNotes(std::vector<Note>& lost, std::vector<Note>& gained, NoteComparison& result);

/// Leaves the notes that are not taken.
inline void RemoveTaken(std::vector<Note>& notes, const std::vector<bool>& taken) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < notes.size(); ++i) {
    if (!taken[i]) notes[kept++] = notes[i];
  }
  notes.resize(kept);
}

/// The notes that only one of two voices has, each list in the order of time. An end that moved as a whole
/// comes first, then runs that are transposed, then notes of one pitch and start. Of the others, either those
/// of one start are paired before those that moved, or after them, whichever takes fewer lines. Both voices
/// in the place of each other give the same pairs. Time is O(n log n), memory is linear.
NoteComparison CompareNotes(std::vector<Note> before, std::vector<Note> after);

}  // namespace zuna_toolkit
