// What each finding is called, how bad it is, what it means and what to do about it.
#include <array>
#include <cstddef>

#include "toolkit/checking/finding.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kCodes = static_cast<std::size_t>(FindingCode::kTempoScale) + 1;

/// How a file is corrected.
constexpr std::string_view kEdit = "zuna-convert edit FILE";

/// In the order of FindingCode.
constexpr std::array<Explanation, kCodes> kFindings{{
    {"show-empty", "the show has no songs", "it is a new show, or all its songs were deleted",
     "check that this is the right file", "zuna-convert info FILE"},
    {"log-empty", "the log has no songs", "no song of the show was edited yet, or all edits were deleted",
     "check that this is the right file", "zuna-convert info FILE"},
    {"song-repeated", "the legacy file has two songs of one number, and only the later one is read",
     "a song was copied and has kept its number",
     "give every song a number of its own in the program that wrote the file", "zuna-convert info FILE"},
    {"sequence-repeated",
     "a song of the legacy file has two lists of one kind, and only the later one is read",
     "the program that wrote the file has an error: no known one writes such a file",
     "compare the song with the program that wrote the file", "zuna-convert print FILE"},
    {"trailing-bytes", "bytes follow the last song of a legacy show; nothing reads them",
     "another program has added something, or two files were joined",
     "convert the show, which leaves the bytes out; rescue finds songs in them",
     "zuna-convert up FILE -o OUT\nzuna-convert rescue FILE -o OUT"},
    {"text-not-utf8", "a name or text is not valid UTF-8, so it is shown wrongly",
     "it was typed on an older system, which wrote accented letters in another way", "type the text again",
     kEdit},
    {"song-number-empty", "a song has no number, so it cannot be chosen by it",
     "a program that makes shows left it out", "give the song a number", kEdit},
    {"song-incomplete", "a song lacks its timeline, its voices or a list of edits",
     "a program that uses the library left out a part", "give the song all its parts", ""},
    {"division-zero", "a quarter note of the song has no ticks, so nothing in it has a time",
     "a program that makes shows left it out", "set the division, such as 480", kEdit},
    {"division-unknown", "the log does not know how many ticks a quarter note of the song has",
     "a legacy log was converted with a show that lacks the song, or that is another one",
     "convert the legacy log again with its show, or set the division",
     "zuna-convert up LOG -o OUT --companion SHOW\nzuna-convert up LOG -o OUT --division 480\n"
     "zuna-convert edit FILE"},
    {"song-length-zero", "the song ends where it begins", "a program that makes shows left it out",
     "set the length of the song to the tick where it ends", kEdit},
    {"song-without-voices", "the song has no voices",
     "the song was begun and not finished, or its voices were deleted", "add the voices, or delete the song",
     kEdit},
    {"song-without-messages", "no voice of the song has a message; format 0.0 cannot hold such a song",
     "the song was begun and not finished, or its notes were deleted", "add the messages, or delete the song",
     kEdit},
    {"tempo-missing", "the song has no tempo, so it cannot be played or converted to 0.0",
     "its tempo was deleted, or the program that made it takes 120 beats per minute for granted",
     "add a tempo at tick 0", kEdit},
    {"tempo-late", "the song begins before its first tempo",
     "its first tempo was moved or deleted, or bars were put before it", "move the first tempo to tick 0",
     kEdit},
    {"tempo-zero",
     "a tempo has no length: a quarter note of it lasts 0 microseconds, or no time that a file can hold",
     "a value was mistyped, or the program that wrote it divided by 0", "correct or delete the tempo", kEdit},
    {"tempo-unlikely", "a tempo is below 10 or above 1000 quarter notes a minute",
     "a value was mistyped or is of another unit: the text of a current file has the microseconds of a "
     "quarter note, that of format 0.0 the seconds of a tick",
     "correct the tempo; 500000 microseconds of a quarter note are 120 a minute", kEdit},
    {"key-unknown", "a key has more than 7 sharps or flats, or is neither major nor minor",
     "a value was mistyped; a MIDI file cannot hold such a key",
     "correct the key: -7 to 7, with the mode 0 or 1", kEdit},
    {"meter-missing", "the song has no meter, so its beats are unknown and it cannot be converted to 0.0",
     "its meter was deleted, or the program that made it takes 4/4 for granted", "add a meter at tick 0",
     kEdit},
    {"meter-late", "the song begins before its first meter; a conversion drops the tempos before it",
     "its first meter was moved or deleted, or bars were put before it", "move the first meter to tick 0",
     kEdit},
    {"meter-without-tempo", "the first meter of the song has no tempo; such a song is not converted",
     "its tempo was moved or deleted, or the meter was moved", "add a tempo where the first meter is", kEdit},
    {"meter-zero", "a meter has no beats in a bar, or a beat without a length",
     "a value was mistyped or left out", "correct or delete the meter", kEdit},
    {"denominator-not-power-of-two",
     "a beat of a meter is no note: its denominator is not 1, 2, 4, 8, 16 and so on",
     "a value was mistyped: written notes are whole, half, quarter, eighth and so on",
     "correct the denominator of the meter", kEdit},
    {"click-zero", "the metronome click has no length, so there is no click to play",
     "a value was left out, or a short click was rounded to 0",
     "set the length of the click, such as 24 clocks and 8 32nds per quarter", kEdit},
    {"timeline-out-of-order", "an entry of the timeline is earlier than the one before it",
     "a program has added an entry at the end of the list and not at its place",
     "put the list into the order of time", kEdit},
    {"timeline-duplicate", "two entries of one kind are at one time, and only one of them can count",
     "an entry was added where there was one", "delete one of the two", kEdit},
    {"timeline-beyond-end", "an entry of the timeline is after the end of the song",
     "the song was shortened, and entries after its new end have stayed",
     "correct its time or the length of the song, or delete it", kEdit},
    {"track-missing",
     "an event of a legacy song belongs to a track that the song does not have; such a show is not converted",
     "a track was deleted, and its events have stayed", "add the track, or delete the event",
     "zuna-convert check FILE --json"},
    {"track-shared", "two tracks of a legacy song have one id; a conversion makes one voice of them",
     "a track was copied and has kept its id, such as one of two drum tracks",
     "give each track an id of its own", "zuna-convert check FILE --to 1.2"},
    {"status-invalid", "the status of a message begins no MIDI channel message, so it cannot be sent",
     "the program that wrote it has an error, or the file was damaged before it was encrypted",
     "delete the message", kEdit},
    {"data-byte-invalid", "a data byte of a message is above 127, so it cannot be sent",
     "MIDI has 7 bits for a value, and the program that wrote it has used 8", "correct or delete the message",
     kEdit},
    {"message-out-of-order", "a message is earlier than the one before it in its voice",
     "a program has added a message at the end of the voice and not at its place",
     "put the messages of the voice into the order of time", kEdit},
    {"message-beyond-end", "a message is after the end of the song, so it is not played",
     "the song was shortened, and messages after its new end have stayed",
     "correct its time or the length of the song, or delete it", kEdit},
    {"note-left-on", "a note begins and does not end before the end of its voice",
     "its end was deleted or cut off; such a note sounds until the instrument is silenced",
     "add the note-off", kEdit},
    {"edit-reversed", "an edit ends before it begins", "its start was moved behind its end",
     "swap or correct its start and end", kEdit},
    {"edit-beyond-end", "an edit reaches beyond the end of the song",
     "the song was shortened after the edit was made",
     "correct its place or the length of the song, or delete it", kEdit},
    {"vamp-count-not-positive", "the number of a vamp is not positive", "a value was mistyped or left at 0",
     "set the number of the vamp", kEdit},
    {"repeat-count-not-positive", "a part is repeated zero times or fewer",
     "a value was mistyped or left at 0", "set how often the part is played", kEdit},
    {"tempo-scale-not-positive", "the factor of a tempo scale is not a positive number",
     "a value was mistyped or left at 0, at which the song would stand still",
     "set the factor; 1 is the tempo as written", kEdit},
}};

}  // namespace

std::string_view CodeText(FindingCode code) { return kFindings.at(static_cast<std::size_t>(code)).code; }

Severity SeverityOf(FindingCode code) {
  switch (code) {
    case FindingCode::kSongIncomplete:
    case FindingCode::kDivisionZero:
    case FindingCode::kSongLengthZero:
    case FindingCode::kTempoMissing:
    case FindingCode::kTempoZero:
    case FindingCode::kMeterMissing:
    case FindingCode::kMeterWithoutTempo:
    case FindingCode::kMeterZero:
    case FindingCode::kDenominatorNoPower:
    case FindingCode::kTimelineOutOfOrder:
    case FindingCode::kTrackMissing:
    case FindingCode::kStatusInvalid:
    case FindingCode::kDataByteInvalid:
    case FindingCode::kMessageOutOfOrder:
    case FindingCode::kEditReversed:
    case FindingCode::kRepeatCount:
    case FindingCode::kTempoScale:
      return Severity::kError;
    default:
      return Severity::kWarning;
  }
}

std::span<const Explanation> FindingExplanations() { return kFindings; }

}  // namespace zuna_toolkit
