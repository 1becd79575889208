// What each loss of a conversion means, and what to do about it.
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {

namespace {

constexpr Explanation kLosses[] = {
    {"show-name-dropped", "a legacy show holds no name",
     "in format 0.0 the name of the show stands in its log", "keep its log too: up takes the name from it",
     "zuna-convert up SHOW -o OUT --companion LOG\nzuna-convert up SHOW -o OUT --show-name NAME"},
    {"song-replaced", "a later song of the same number takes the place of an earlier one in the legacy file",
     "songs are found by their numbers, and a song that was copied has kept its number",
     "give every song a number of its own before the conversion", "zuna-convert info FILE"},
    {"sequence-replaced",
     "a later list of the same kind takes the place of an earlier one of the same song in the legacy file",
     "a song has one list of each kind, and the program that wrote the file made two",
     "compare the song with the program that wrote the file", "zuna-convert print FILE"},
    {"trailing-bytes-dropped", "bytes after the last song of a legacy show are left out",
     "no song holds them, and nothing reads them",
     "nothing, unless another program needs them: keep the legacy file then", ""},
    {"voice-renumbered",
     "a voice gets the number of a legacy track: 9 for drums, the others in the order of their numbers",
     "a legacy track gets its number from the place of the voice and from its name; the voice keeps none of "
     "its own",
     "assign the voice again where it is chosen by its number",
     "zuna-convert info FILE\nzuna-convert print FILE"},
    {"voice-merged",
     "voices that share the number of a legacy track become one voice, such as all drum voices",
     "a legacy track is known by its id alone, and all drums have the id 9",
     "on the way up, give each track an id of its own; on the way down, rename drum voices so that only one "
     "is called \"Drums\" or \"Drum Kit\"; or keep the original",
     "zuna-convert check FILE --to 1.2\nzuna-convert check FILE --to 0.0"},
    {"voice-name-replaced", "a voice that was merged gets the name of the voice that it is a part of",
     "the voices that became one can have one name only", "rename the voice after the conversion",
     "zuna-convert check FILE --to 0.0"},
    {"voice-reordered", "the tracks of a legacy song are put into the order of their ids",
     "the current versions keep voices in the order of their numbers", "nothing, the music is the same", ""},
    {"reserved-field-defaulted", "a field that no program shows is set to 65535",
     "format 0.0 has no place for it", "nothing, the music is the same", ""},
    {"message-channel-renumbered", "messages get the MIDI channel that their track prescribes",
     "a legacy event has no channel: it is played on that of its track",
     "set the channel of the instrument to that of the track", "zuna-convert check FILE --to 0.0"},
    {"delta-time-defaulted", "the times between events are computed anew from the times since the start",
     "an event has its time twice in format 0.0, and only the time since the start is kept",
     "nothing, unless another program reads them: keep the legacy file then", ""},
    {"timeline-name-defaulted", "the name of a legacy timeline becomes the number of its song",
     "a timeline of the current versions belongs to its song and has no name", "nothing, no program shows it",
     ""},
    {"timeline-length-defaulted", "the length of a legacy timeline becomes the length of its song",
     "a timeline of the current versions is as long as its song, and here the two differed",
     "check that the length of the song is right", "zuna-convert check FILE --to 1.2"},
    {"tempo-dropped", "a tempo is left out, such as one before the first meter",
     "a tempo is kept under the last meter before it, and this one has none",
     "move the first meter to the start of the song", "zuna-convert check FILE --to 1.2"},
    {"tempo-added", "a tempo is repeated where the metronome click changes, or where a meter begins",
     "in format 0.0 the tempos carry the click of the metronome, and in the current versions the meters",
     "nothing, the music is the same", ""},
    {"tempo-changed",
     "a tempo gets another time or value, because the timeline is in disorder or out of range",
     "tempos are kept under the meters before them, so disorder of the meters moves tempos",
     "put tempos and meters into the order of time, and correct the tempo",
     "zuna-convert check FILE --to 1.2"},
    {"tempo-approximated",
     "a tempo is rounded to what the format holds, or its beats per minute and click are computed anew",
     "the current versions count whole microseconds of a quarter note, and format 0.0 parts of a second of a "
     "tick",
     "nothing, the difference cannot be heard; check the number of beats per minute if it is shown", ""},
    {"tempo-defaulted", "a tempo that the format cannot hold becomes 0 microseconds",
     "the value is infinite, is not a number, or is too long for a file",
     "correct the tempo, or the division of the song if it is 0", "zuna-convert check FILE --to 1.2"},
    {"tempo-reordered", "tempos change their order, because meters are in disorder",
     "tempos are kept under the meters before them, so disorder of the meters moves tempos",
     "put tempos and meters into the order of time", "zuna-convert check FILE --to 1.2"},
    {"bar-label-cut", "a bar label keeps its first 7 bytes",
     "the current versions have 7 bytes for a label, and an accented letter takes two of them",
     "shorten the label", "zuna-convert check FILE --to 1.2"},
    {"key-cut", "a key or mode keeps its low 8 bits", "format 0.0 has 8 bits for a key",
     "correct the key: it has at most 7 sharps or flats", "zuna-convert check FILE --to 0.0"},
    {"page-number-cut", "a page number keeps its low 16 bits", "format 0.0 has 16 bits for a page number",
     "use page numbers up to 65535", "zuna-convert check FILE --to 0.0"},
    {"meter-dropped", "a meter is left out, such as one of two at one time",
     "a meter is kept with the tempos under it, and only one of two at one time has any",
     "put the meters into the order of time, and leave one at each time", "zuna-convert check FILE --to 1.2"},
    {"meter-added", "a meter is repeated where the metronome click changes",
     "in format 0.0 the tempos carry the click of the metronome, and in the current versions the meters",
     "nothing, the music is the same", ""},
    {"meter-changed", "a meter moves to the time of its first tempo, or gets another signature in disorder",
     "a meter is kept with the first tempo under it, which is at another time",
     "put a tempo at the time of each meter", "zuna-convert check FILE --to 1.2"},
    {"meter-approximated", "the metronome click of a meter is rounded to what the format holds",
     "one format counts the click in clocks of a quarter note, the other in 32nd notes",
     "check the click, or choose one of whole 32nd notes", "zuna-convert check FILE --to 1.2"},
    {"meter-reordered", "meters change their order, because they are in disorder",
     "each tempo takes its meter with it, so disorder of one list moves entries of the other",
     "put the meters into the order of time", "zuna-convert check FILE --to 1.2"},
    {"fermata-dropped", "format 0.0 holds no fermatas", "format 0.0 is older than fermatas",
     "keep the original log: copy-fermatas brings them back", "zuna-convert copy-fermatas ORIGINAL LOG"},
    {"attacca-dropped", "format 0.0 holds no attacca", "format 0.0 is older than the attacca of a song",
     "keep the original log: copy-fermatas brings it back", "zuna-convert copy-fermatas ORIGINAL LOG"},
    {"division-dropped", "a legacy log holds no divisions",
     "in format 0.0 the division of a song stands in the show alone",
     "keep its show too: up takes the division from it",
     "zuna-convert up LOG -o OUT --companion SHOW\nzuna-convert up LOG -o OUT --division 480"},
    {"division-defaulted", "a song of a log gets the division 0",
     "a legacy log holds no divisions, and the show that gives them lacks the song",
     "convert the log with its own show, or give the division",
     "zuna-convert up LOG -o OUT --companion SHOW\nzuna-convert up LOG -o OUT --division 480"},
    {"edit-label-dropped", "format 0.0 holds no labels of edits", "format 0.0 is older than labels",
     "keep the original log", "zuna-convert check FILE --to 0.0"},
    {"edit-value-cut", "the value of an edit keeps its low 8 bits",
     "format 0.0 has 8 bits for a value: 300 becomes 44", "use values from -128 to 127",
     "zuna-convert check FILE --to 0.0"},
    {"caesura-dropped", "format 0.0 holds no caesura with a second word above 1",
     "a legacy caesura has a time alone, and a second word above 1 is no caesura of that format",
     "keep the original log, or enter the caesura again", "zuna-convert check FILE --to 0.0"},
    {"second-word-defaulted", "the second word of a caesura becomes 0", "a legacy caesura has a time alone",
     "keep the original log", "zuna-convert check FILE --to 0.0"},
};

}  // namespace

bool IsHarmless(const Difference& loss) {
  switch (loss.subject) {
    case Subject::kShowName:
    case Subject::kTimelineName:
    case Subject::kReservedField:
    case Subject::kDeltaTime:
    case Subject::kTrailingBytes:
      return true;
    case Subject::kDivision:
      return loss.action == Action::kDropped;
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
