// What each loss of a conversion means, and what to do about it.
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {

namespace {

constexpr Explanation kLosses[] = {
    {"show-name-dropped", "a legacy show holds no name", "keep its log too: up takes the name from it"},
    {"song-replaced", "a later song of the same number takes the place of an earlier one in the legacy file",
     "give every song a number of its own before the conversion"},
    {"sequence-replaced",
     "a later list of the same kind takes the place of an earlier one of the same song in the legacy file",
     "compare the song with the program that wrote the file"},
    {"trailing-bytes-dropped", "bytes after the last song of a legacy show are left out",
     "nothing, unless another program needs them: keep the legacy file then"},
    {"voice-renumbered",
     "a voice gets the number of a legacy track: 9 for drums, the others in the order of their numbers",
     "assign the voice again where it is chosen by its number"},
    {"voice-merged",
     "voices that share the number of a legacy track become one voice, such as all drum voices",
     "rename drum voices so that only one is called \"Drums\" or \"Drum Kit\", or keep the original"},
    {"voice-name-replaced", "a voice that was merged gets the name of the voice that it is a part of",
     "rename the voice after the conversion"},
    {"voice-reordered", "the tracks of a legacy song are put into the order of their ids",
     "nothing, the music is the same"},
    {"reserved-field-defaulted", "a field that no program shows is set to 65535",
     "nothing, the music is the same"},
    {"message-channel-renumbered", "messages get the MIDI channel that their track prescribes",
     "set the channel of the instrument to that of the track"},
    {"delta-time-defaulted", "the times between events are computed anew from the times since the start",
     "nothing, unless another program reads them: keep the legacy file then"},
    {"timeline-name-defaulted", "the name of a legacy timeline becomes the number of its song",
     "nothing, no program shows it"},
    {"timeline-length-defaulted", "the length of a legacy timeline becomes the length of its song",
     "check that the length of the song is right"},
    {"tempo-dropped", "a tempo is left out, such as one before the first meter",
     "move the first meter to the start of the song"},
    {"tempo-added", "a tempo is repeated where the metronome click changes, or where a meter begins",
     "nothing, the music is the same"},
    {"tempo-changed",
     "a tempo gets another time or value, because the timeline is in disorder or out of range",
     "put tempos and meters into the order of time, and correct the tempo"},
    {"tempo-approximated",
     "a tempo is rounded to what the format holds, or its beats per minute and click are computed anew",
     "nothing, the difference cannot be heard; check the number of beats per minute if it is shown"},
    {"tempo-defaulted", "a tempo that the format cannot hold becomes 0 microseconds",
     "correct the tempo, or the division of the song if it is 0"},
    {"tempo-reordered", "tempos change their order, because meters are in disorder",
     "put tempos and meters into the order of time"},
    {"bar-label-cut", "a bar label keeps its first 7 bytes", "shorten the label"},
    {"key-cut", "a key or mode keeps its low 8 bits", "correct the key: it has at most 7 sharps or flats"},
    {"page-number-cut", "a page number keeps its low 16 bits", "use page numbers up to 65535"},
    {"meter-dropped", "a meter is left out, such as one of two at one time",
     "put the meters into the order of time, and leave one at each time"},
    {"meter-added", "a meter is repeated where the metronome click changes",
     "nothing, the music is the same"},
    {"meter-changed", "a meter moves to the time of its first tempo, or gets another signature in disorder",
     "put a tempo at the time of each meter"},
    {"meter-approximated", "the metronome click of a meter is rounded to what the format holds",
     "check the click, or choose one of whole 32nd notes"},
    {"meter-reordered", "meters change their order, because they are in disorder",
     "put the meters into the order of time"},
    {"fermata-dropped", "format 0.0 holds no fermatas",
     "keep the original log: copy-fermatas brings them back"},
    {"attacca-dropped", "format 0.0 holds no attacca", "keep the original log: copy-fermatas brings it back"},
    {"division-dropped", "a legacy log holds no divisions",
     "keep its show too: up takes the division from it"},
    {"edit-label-dropped", "format 0.0 holds no labels of edits", "keep the original log"},
    {"edit-value-cut", "the value of an edit keeps its low 8 bits", "use values from -128 to 127"},
    {"caesura-dropped", "format 0.0 holds no caesura with a second word above 1",
     "keep the original log, or enter the caesura again"},
    {"second-word-defaulted", "the second word of a caesura becomes 0", "keep the original log"},
};

}  // namespace

bool IsHarmless(const Difference& loss) {
  switch (loss.subject) {
    case Subject::kShowName:
    case Subject::kDivision:
    case Subject::kTimelineName:
    case Subject::kReservedField:
    case Subject::kDeltaTime:
    case Subject::kTrailingBytes:
      return true;
    case Subject::kVoice:
      return loss.action == Action::kReordered;
    case Subject::kTempo:
      return loss.action == Action::kAdded || loss.action == Action::kApproximated;
    case Subject::kMeter:
      return loss.action == Action::kAdded;
    default:
      return false;
  }
}

std::span<const Explanation> LossExplanations() { return kLosses; }

}  // namespace zuna_toolkit
