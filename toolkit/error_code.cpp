// The table of all error codes, and the codes of the errors that other libraries throw.
#include "toolkit/error_code.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "zuna_sec/errors.h"

namespace zuna_toolkit {

namespace {

/// All that there is to tell about a code.
struct Row {
  ErrorCode code;
  ErrorKind kind;
  Explanation explanation;
};

constexpr std::array kRows = {
    Row{ErrorCode::kWrongKey,
        ErrorKind::kWrongKey,
        {"wrong-key", "the file was encrypted with another key or IV", "give the right key file"}},
    Row{ErrorCode::kNoKey,
        ErrorKind::kWrongKey,
        {"no-key", "the file is encrypted with a key, and none was given",
         "name its key file with --key-file or ZUNA_KEY_FILE"}},
    Row{ErrorCode::kNotEncrypted,
        ErrorKind::kBadInput,
        {"not-encrypted", "the file is empty or does not begin like an encrypted file",
         "give an encrypted show or log file"}},
    Row{ErrorCode::kChangedInTransfer,
        ErrorKind::kBadInput,
        {"changed-in-transfer",
         "an encrypted file was copied as text, which changed its line ends or its eighth bits",
         "copy it again as binary"}},
    Row{ErrorCode::kPlainFile,
        ErrorKind::kBadInput,
        {"plain-file", "the file is a show, a log or a text that is not encrypted", "use encrypt first"}},
    Row{ErrorCode::kMidiFile,
        ErrorKind::kBadInput,
        {"midi-file", "the file is a MIDI file, not an encrypted one", "use midi import"}},
    Row{ErrorCode::kUnsupportedEnvelope,
        ErrorKind::kBadInput,
        {"unsupported-envelope", "the file is encrypted in a way that this release does not know",
         "use a newer release"}},
    Row{ErrorCode::kCutOff,
        ErrorKind::kBadInput,
        {"cut-off", "the file ends too early", "get a complete copy of the file"}},
    Row{ErrorCode::kBytesAfterEnd,
        ErrorKind::kBadInput,
        {"bytes-after-end", "the file goes on after its end", "get another copy of the file"}},
    Row{ErrorCode::kDamaged,
        ErrorKind::kBadInput,
        {"damaged", "the file was changed after it was encrypted", "get an undamaged copy of the file"}},
    Row{ErrorCode::kCipherUnavailable,
        ErrorKind::kBadInput,
        {"cipher-unavailable", "the cryptographic library does not provide the cipher",
         "check the installed libgcrypt, and that it is not in FIPS mode"}},
    Row{ErrorCode::kTooLarge,
        ErrorKind::kBadInput,
        {"too-large", "the file holds more bytes than such a file can",
         "give another file, or split the show"}},
    Row{ErrorCode::kBadContent,
        ErrorKind::kBadInput,
        {"bad-content", "the content of the file is not what its format prescribes",
         "get an undamaged copy of the file"}},
    Row{ErrorCode::kTextError,
        ErrorKind::kBadInput,
        {"text-error", "a text form is not correct", "correct the text"}},
    Row{ErrorCode::kUnsupportedVersion,
        ErrorKind::kBadInput,
        {"unsupported-version", "the file is of a version that this release does not know",
         "use a newer release"}},
    Row{ErrorCode::kNotAShowOrLog,
        ErrorKind::kBadInput,
        {"not-a-show-or-log", "the file is no show and no log of any version", "give an undamaged file"}},
    Row{ErrorCode::kWrongKind,
        ErrorKind::kBadInput,
        {"wrong-kind", "the file is a log where a show is expected, or a show where a log is",
         "give the other file"}},
    Row{ErrorCode::kLegacyWanted,
        ErrorKind::kBadInput,
        {"legacy-wanted", "the file is of a current version, and one of version 0.0 is expected",
         "use convert or down"}},
    Row{ErrorCode::kCurrentWanted,
        ErrorKind::kBadInput,
        {"current-wanted", "the file is of version 0.0, and one of a current version is expected",
         "use up first"}},
    Row{ErrorCode::kWrongCompanion,
        ErrorKind::kBadInput,
        {"wrong-companion", "the companion is not a file of version 0.0 of the other kind",
         "give the log of the show, or the show of the log"}},
    Row{ErrorCode::kUnrelatedCompanion,
        ErrorKind::kRefused,
        {"unrelated-companion", "no song of the companion agrees with one of the input in number and name",
         "give the right file, or --any-companion to take this one"}},
    Row{ErrorCode::kCompanionMissing,
        ErrorKind::kIo,
        {"companion-missing", "a legacy file needs its companion, and it is not there",
         "give --companion or --companions, or --show-name or --division instead"}},
    Row{ErrorCode::kSongsMissing,
        ErrorKind::kBadInput,
        {"songs-missing", "a log lacks songs of the log that is copied from",
         "give a log of the same songs"}},
    Row{ErrorCode::kNotOneDocument,
        ErrorKind::kBadInput,
        {"not-one-document", "two documents are not the two forms of one",
         "give both forms of one document"}},
    Row{ErrorCode::kIncompleteSong,
        ErrorKind::kBadInput,
        {"incomplete-song", "a program built a song without one of its parts",
         "give every song all its lists"}},
    Row{ErrorCode::kBeyondLegacyLimits,
        ErrorKind::kBadInput,
        {"beyond-legacy-limits", "the show or log has more or longer things than format 0.0 holds",
         "shorten or remove what the message names"}},
    Row{ErrorCode::kCannotBeConverted,
        ErrorKind::kBadInput,
        {"cannot-be-converted", "a song is such that the other format cannot hold it",
         "correct the song, or get an undamaged copy of the file"}},
    Row{ErrorCode::kNotAMidiFile,
        ErrorKind::kBadInput,
        {"not-a-midi-file", "the file is not a Standard MIDI File", "give a .mid file"}},
    Row{ErrorCode::kUnsupportedMidi,
        ErrorKind::kBadInput,
        {"unsupported-midi", "the MIDI file has a format or a division that is not supported",
         "export it as format 0 or 1, with ticks of a quarter note"}},
    Row{ErrorCode::kBeyondMidiLimits,
        ErrorKind::kBadInput,
        {"beyond-midi-limits", "the song has what a MIDI file cannot hold",
         "change the song as the message says"}},
    Row{ErrorCode::kBeyondShowLimits,
        ErrorKind::kBadInput,
        {"beyond-show-limits", "the MIDI file has more voices than a song holds",
         "split it into several files"}},
    Row{ErrorCode::kNoSuchVersion,
        ErrorKind::kUsage,
        {"no-such-version", "files of this kind are not written in this version",
         "give one of the versions that the message names"}},
    Row{ErrorCode::kIo,
        ErrorKind::kIo,
        {"io", "a file or stream cannot be opened, read or written", "do what the message says"}},
    Row{ErrorCode::kNotAFolder,
        ErrorKind::kIo,
        {"not-a-folder", "there is no folder at the path", "give a folder, or create it first"}},
    Row{ErrorCode::kUsage,
        ErrorKind::kUsage,
        {"usage", "the command line is wrong", "see zuna-convert --help or zuna-convert COMMAND --help"}},
    Row{ErrorCode::kOutputExists,
        ErrorKind::kRefused,
        {"output-exists", "there is a file at the place of the output",
         "give --force to replace it, or another output"}},
    Row{ErrorCode::kOutputIsInput,
        ErrorKind::kRefused,
        {"output-is-input", "the output is an input as well", "give another output"}},
    Row{ErrorCode::kOutputIsNoFile,
        ErrorKind::kRefused,
        {"output-is-no-file", "what is at the place of the output is not a regular file",
         "give another output, or - for a pipe"}},
    Row{ErrorCode::kOutputIsTerminal,
        ErrorKind::kRefused,
        {"output-is-terminal", "Standard output is a terminal, and the result is binary",
         "give -o FILE or a pipe"}},
    Row{ErrorCode::kLossRefused,
        ErrorKind::kRefused,
        {"loss-refused", "the conversion would lose something, and that was not accepted",
         "accept the codes of the losses with --accept, or leave out --fail-on"}},
    Row{ErrorCode::kEncryptedAlready,
        ErrorKind::kRefused,
        {"encrypted-already", "the file to encrypt is encrypted already",
         "give --force to encrypt it again"}},
    Row{ErrorCode::kEmptyKey,
        ErrorKind::kRefused,
        {"empty-key", "the key is empty, and an empty key protects nothing",
         "name a key file with a key, or give --empty-key"}},
    Row{ErrorCode::kBadKeyFile,
        ErrorKind::kBadInput,
        {"bad-key-file", "a line of the key file is wrong or missing", "correct the key file"}},
    Row{ErrorCode::kSongNotFound,
        ErrorKind::kNegative,
        {"song-not-found", "the file has no song of this number",
         "give one of the numbers that the message names"}},
    Row{ErrorCode::kCodeNotFound,
        ErrorKind::kNegative,
        {"code-not-found", "there is no code of this name", "look at the list that explain prints"}},
    Row{ErrorCode::kNothingMatched,
        ErrorKind::kNothingMatched,
        {"nothing-matched", "no file is as it was asked for", "give another folder or range"}},
    Row{ErrorCode::kOutOfMemory,
        ErrorKind::kInternal,
        {"out-of-memory", "there is not enough memory", "close other programs or take a smaller file"}},
    Row{ErrorCode::kInternal,
        ErrorKind::kInternal,
        {"internal", "the program has an error of its own", "report it"}},
    Row{ErrorCode::kInterrupted,
        ErrorKind::kInterrupted,
        {"interrupted", "a signal ended the program before its output was complete", "run it again"}},
    Row{ErrorCode::kClosedPipe,
        ErrorKind::kClosedPipe,
        {"closed-pipe", "the program that reads the output has stopped reading",
         "nothing, where that program had enough"}},
};

constexpr bool AreInOrder() {
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    if (kRows[i].code != static_cast<ErrorCode>(i)) return false;
  }
  return kRows.back().code == ErrorCode::kClosedPipe;
}
static_assert(AreInOrder(), "a row stands at the number of its code");

constexpr std::array<Explanation, kRows.size()> kErrors = [] {
  std::array<Explanation, kRows.size()> explanations;
  std::transform(kRows.begin(), kRows.end(), explanations.begin(),
                 [](const Row& row) { return row.explanation; });
  return explanations;
}();

template <typename Type>
bool Is(const zuna_sec::CipherError& error) {
  return dynamic_cast<const Type*>(&error) != nullptr;
}

}  // namespace

ErrorCode CodeOf(const zuna_sec::CipherError& error) {
  if (Is<zuna_sec::WrongKeyError>(error)) return ErrorCode::kWrongKey;
  if (Is<zuna_sec::ChangedInTransferError>(error)) return ErrorCode::kChangedInTransfer;
  if (Is<zuna_sec::NotEncryptedError>(error)) return ErrorCode::kNotEncrypted;
  if (Is<zuna_sec::UnsupportedEnvelopeError>(error)) return ErrorCode::kUnsupportedEnvelope;
  if (Is<zuna_sec::TruncatedError>(error)) return ErrorCode::kCutOff;
  if (Is<zuna_sec::TrailingBytesError>(error)) return ErrorCode::kBytesAfterEnd;
  if (Is<zuna_sec::TooLargeError>(error)) return ErrorCode::kTooLarge;
  if (Is<zuna_sec::CipherUnavailableError>(error)) return ErrorCode::kCipherUnavailable;
  return ErrorCode::kDamaged;
}

std::string_view CodeText(ErrorCode code) { return kErrors.at(static_cast<std::size_t>(code)).code; }

ErrorKind KindOf(ErrorCode code) { return kRows.at(static_cast<std::size_t>(code)).kind; }

std::span<const Explanation> ErrorExplanations() { return kErrors; }

}  // namespace zuna_toolkit
