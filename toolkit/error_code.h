// The codes of all errors, of the toolkit and of the tool (docs/errors.md).
#pragma once

#include <span>
#include <string_view>

#include "kit/api.h"
#include "toolkit/explanation.h"

namespace zuna_sec {
class CipherError;
}  // namespace zuna_sec

namespace zuna_toolkit {

/// What kind of trouble an error reports. The tool has one exit code for each.
enum class ErrorKind {
  kBadInput,        ///< the content of a file is damaged, unsupported or unsuitable
  kWrongKey,        ///< an encrypted file needs another key or IV
  kIo,              ///< a file or stream cannot be opened, read or written
  kUsage,           ///< the caller asked for what there is not, such as a log of version 1.0
  kRefused,         ///< refused by policy, such as replacing a file
  kNegative,        ///< the answer to the question is no
  kNothingMatched,  ///< nothing is as the caller asked for it
  kInternal,        ///< no fault of the caller or of a file
  kInterrupted,     ///< ended by a signal
  kClosedPipe,      ///< the program that read the output has ended
};

/// What happened, for programs. docs/errors.md has the meaning of each. The toolkit throws those up to kIo,
/// kEmptyKey, kBadKeyFile and kInternal; the tool also has the others.
enum class ErrorCode {
  kWrongKey,             ///< "wrong-key"
  kNoKey,                ///< "no-key"
  kEmptyFile,            ///< "empty-file"
  kNotEncrypted,         ///< "not-encrypted"
  kChangedInTransfer,    ///< "changed-in-transfer"
  kPlainFile,            ///< "plain-file"
  kMidiFile,             ///< "midi-file"
  kArchive,              ///< "archive"
  kEncryptedTwice,       ///< "encrypted-twice"
  kUnsupportedEnvelope,  ///< "unsupported-envelope"
  kCutOff,               ///< "cut-off"
  kBytesAfterEnd,        ///< "bytes-after-end"
  kDamaged,              ///< "damaged"
  kCipherUnavailable,    ///< "cipher-unavailable"
  kTooLarge,             ///< "too-large"
  kBadContent,           ///< "bad-content"
  kTextError,            ///< "text-error"
  kUnsupportedVersion,   ///< "unsupported-version"
  kNotAShowOrLog,        ///< "not-a-show-or-log"
  kNothingToSave,        ///< "nothing-to-save"
  kWrongKind,            ///< "wrong-kind"
  kLegacyWanted,         ///< "legacy-wanted"
  kCurrentWanted,        ///< "current-wanted"
  kWrongCompanion,       ///< "wrong-companion"
  kUnrelatedCompanion,   ///< "unrelated-companion"
  kCompanionMissing,     ///< "companion-missing"
  kSongsMissing,         ///< "songs-missing"
  kNotOneDocument,       ///< "not-one-document"
  kIncompleteSong,       ///< "incomplete-song"
  kBeyondLegacyLimits,   ///< "beyond-legacy-limits"
  kCannotBeConverted,    ///< "cannot-be-converted"
  kNotAMidiFile,         ///< "not-a-midi-file"
  kUnsupportedMidi,      ///< "unsupported-midi"
  kBeyondMidiLimits,     ///< "beyond-midi-limits"
  kBeyondShowLimits,     ///< "beyond-show-limits"
  kNoSuchVersion,        ///< "no-such-version"
  kNotFound,             ///< "not-found"
  kNoPermission,         ///< "no-permission"
  kNoSpace,              ///< "no-space"
  kIo,                   ///< "io"
  kNotAFolder,           ///< "not-a-folder"
  kUsage,                ///< "usage"
  kOutputExists,         ///< "output-exists"
  kOutputIsInput,        ///< "output-is-input"
  kOutputIsNoFile,       ///< "output-is-no-file"
  kOutputIsTerminal,     ///< "output-is-terminal"
  kLossRefused,          ///< "loss-refused"
  kEncryptedAlready,     ///< "encrypted-already"
  kEditorFailed,         ///< "editor-failed"
  kChangedMeanwhile,     ///< "changed-meanwhile"
  kReportInUse,          ///< "report-in-use"
  kOwnFermatas,          ///< "own-fermatas"
  kEmptyKey,             ///< "empty-key"
  kBadKeyFile,           ///< "bad-key-file"
  kSongNotFound,         ///< "song-not-found"
  kCodeNotFound,         ///< "code-not-found"
  kNothingMatched,       ///< "nothing-matched"
  kOutOfMemory,          ///< "out-of-memory"
  kInternal,             ///< "internal"
  kInterrupted,          ///< "interrupted"
  kClosedPipe,           ///< "closed-pipe"
};

/// The code of an error of the security library.
ZUNA_API ErrorCode CodeOf(const zuna_sec::CipherError& error);

/// The code of an input or output that failed for the reason `error`, a value of errno.
ZUNA_API ErrorCode CodeOfSystemError(int error);

/// The code as text, such as "wrong-key".
ZUNA_API std::string_view CodeText(ErrorCode code);

/// What kind of trouble `code` is.
ZUNA_API ErrorKind KindOf(ErrorCode code);

/// Whether an error of this code may be one of a damaged file, of which rescue saves what is left.
ZUNA_API bool MayRescueHelp(ErrorCode code);

/// All codes in the order of ErrorCode: the explanation of a code is at the code's number.
ZUNA_API std::span<const Explanation> ErrorExplanations();

}  // namespace zuna_toolkit
