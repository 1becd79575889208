// What each finding is called, how bad it is, what it means and what to do about it.
#include <array>
#include <cstddef>

#include "toolkit/checking/finding.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kCodes = static_cast<std::size_t>(FindingCode::kTempoScale) + 1;

/// In the order of FindingCode.
constexpr std::array<Explanation, kCodes> kFindings{{
    {"show-empty", "the show has no songs", "check that this is the right file"},
    {"log-empty", "the log has no songs", "check that this is the right file"},
    {"song-repeated", "the legacy file has two songs of one number, and only the later one is read",
     "give every song a number of its own in the program that wrote the file"},
    {"sequence-repeated",
     "a song of the legacy file has two lists of one kind, and only the later one is read",
     "compare the song with the program that wrote the file"},
    {"trailing-bytes", "bytes follow the last song of a legacy show; nothing reads them",
     "convert the show; the bytes are left out"},
    {"text-not-utf8", "a name or text is not valid UTF-8, so it is shown wrongly", "type the text again"},
    {"song-number-empty", "a song has no number, so it cannot be chosen by it", "give the song a number"},
    {"song-incomplete", "a song lacks its timeline, its voices or a list of edits",
     "give the song all its parts"},
    {"division-zero", "a quarter note of the song has no ticks, so nothing in it has a time",
     "set the division, such as 480"},
    {"song-length-zero", "the song ends where it begins",
     "set the length of the song to the tick where it ends"},
    {"song-without-voices", "the song has no voices", "add the voices, or delete the song"},
    {"song-without-messages", "no voice of the song has a message; format 0.0 cannot hold such a song",
     "add the messages, or delete the song"},
    {"tempo-missing", "the song has no tempo, so it cannot be played or converted to 0.0",
     "add a tempo at tick 0"},
    {"tempo-late", "the song begins before its first tempo", "move the first tempo to tick 0"},
    {"tempo-zero",
     "a tempo has no length: a quarter note of it lasts 0 microseconds, or no time that a file can hold",
     "correct or delete the tempo"},
    {"meter-missing", "the song has no meter, so its beats are unknown and it cannot be converted to 0.0",
     "add a meter at tick 0"},
    {"meter-late", "the song begins before its first meter; a conversion drops the tempos before it",
     "move the first meter to tick 0"},
    {"meter-zero", "a meter has no beats in a bar, or a beat without a length",
     "correct or delete the meter"},
    {"denominator-not-power-of-two",
     "a beat of a meter is no note: its denominator is not 1, 2, 4, 8, 16 and so on",
     "correct the denominator of the meter"},
    {"click-zero", "the metronome click has no length, so there is no click to play",
     "set the length of the click, such as 24 clocks and 8 32nds per quarter"},
    {"timeline-out-of-order", "an entry of the timeline is earlier than the one before it",
     "put the list into the order of time"},
    {"timeline-duplicate", "two entries of one kind are at one time, and only one of them can count",
     "delete one of the two"},
    {"timeline-beyond-end", "an entry of the timeline is after the end of the song",
     "correct its time or the length of the song, or delete it"},
    {"track-missing",
     "an event of a legacy song belongs to a track that the song does not have; such a show is not converted",
     "add the track, or delete the event"},
    {"track-shared", "two tracks of a legacy song have one id; a conversion makes one voice of them",
     "give each track an id of its own"},
    {"status-invalid", "the status of a message begins no MIDI channel message, so it cannot be sent",
     "delete the message"},
    {"data-byte-invalid", "a data byte of a message is above 127, so it cannot be sent",
     "correct or delete the message"},
    {"message-out-of-order", "a message is earlier than the one before it in its voice",
     "put the messages of the voice into the order of time"},
    {"message-beyond-end", "a message is after the end of the song, so it is not played",
     "correct its time or the length of the song, or delete it"},
    {"note-left-on", "a note begins and does not end before the end of its voice", "add the note-off"},
    {"edit-reversed", "an edit ends before it begins", "swap or correct its start and end"},
    {"edit-beyond-end", "an edit reaches beyond the end of the song",
     "correct its place or the length of the song, or delete it"},
    {"vamp-count-not-positive", "the number of a vamp is not positive", "set the number of the vamp"},
    {"repeat-count-not-positive", "a part is repeated zero times or fewer",
     "set how often the part is played"},
    {"tempo-scale-not-positive", "the factor of a tempo scale is not a positive number",
     "set the factor; 1 is the tempo as written"},
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
