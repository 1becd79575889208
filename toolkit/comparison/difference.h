// One difference between two documents, as data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/api.h"
#include "toolkit/place.h"

namespace zuna_toolkit {

/// What differs.
enum class Subject : std::uint8_t {
  kShowName,
  kLogLabel,
  kIdentifier,
  kTagPair,
  kTrailingBytes,  ///< bytes after the last song of a legacy show's file
  kSequence,       ///< a list of one kind in a legacy file
  kSong,
  kSongName,
  kDivision,
  kSongLength,
  kTimelineName,    ///< of a legacy timeline
  kTimelineLength,  ///< of a legacy timeline
  kVoice,
  kVoiceNumber,
  kVoiceName,
  kReservedField,  ///< of a voice
  kMessage,
  kMessageChannel,
  kDeltaTime,  ///< of legacy events
  kTempo,
  kBarLabel,
  kKey,
  kPageNumber,
  kMeter,
  kAttacca,
  kVamp,
  kRepeat,
  kCut,
  kTranspose,
  kTempoScale,
  kClick,
  kFermata,
  kMarker,
  kCaesura,
  kEditLabel,
  kEditValue,
  kSecondWord,  ///< of a caesura
  kNote,        ///< of a voice: a note-on and its note-off
  kOtherBytes,  ///< bytes of two files that differ where no field does
  kSongEdits,   ///< all that a log has for a song
};

/// How it differs.
enum class Action : std::uint8_t {
  kAdded,         ///< only the second document has it
  kDropped,       ///< only the first document has it
  kChanged,       ///< both have it, with other values
  kCut,           ///< a part of it is left: the beginning of a text, or the low bits of a number
  kApproximated,  ///< it is rounded
  kDefaulted,     ///< it gets a value that does not come from it
  kRenumbered,    ///< it gets another number
  kMerged,        ///< it is a part of something else in the second document
  kReplaced,      ///< another one of the same kind took its place
  kReordered,     ///< the second document has the same entries in another order
  kMoved,         ///< it stands at another time, and may have other values there
  kRewritten,     ///< very much of it differs, so its parts were compared apart
};

/// A field of an entry that differs in two documents.
struct FieldChange {
  std::string_view name;                                ///< such as "velocity"
  std::string before;                                   ///< texts between quotation marks
  std::string after;                                    ///< the same of the second document
  std::optional<std::int64_t> increase = std::nullopt;  ///< of a number
};

/// One difference. Texts are for people and hold names as they stand in the document, in any bytes.
struct Difference {
  Subject subject = Subject::kSong;  ///< what differs
  Action action = Action::kChanged;  ///< how it differs
  std::string song;       ///< the song number; empty where the difference is about the whole document
  Place place;            ///< where in the song
  std::string where;      ///< the voice, as in: voice 3 "Piano" (64 bytes of its name); may be empty
  std::string before;     ///< in the first document; empty for what was added
  std::string after;      ///< in the second document; empty for what was dropped
  std::size_t count = 1;  ///< how many consecutive entries of the list, from the index on, differ in this way
  std::vector<FieldChange> changes = {};  ///< of an entry that both have; not its time
};

/// A stable name of the kind of a difference, such as "fermata-dropped" or "tempo-changed".
ZUNA_API std::string CodeText(const Difference& difference);

}  // namespace zuna_toolkit
