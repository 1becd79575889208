// One finding of a check, as data (docs/checks.md).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "kit/api.h"
#include "toolkit/explanation.h"
#include "toolkit/place.h"

namespace zuna_toolkit {

/// How bad a finding is.
enum class Severity : std::uint8_t {
  kError,    ///< the song cannot be played or converted rightly
  kWarning,  ///< it is likely a mistake
};

/// What was found. FindingExplanations() says what each means, in this order.
enum class FindingCode : std::uint8_t {
  kShowEmpty,
  kLogEmpty,
  kSongRepeated,
  kSequenceRepeated,
  kTrailingBytes,
  kTextNotUtf8,
  kSongNumberEmpty,
  kSongIncomplete,
  kDivisionZero,
  kDivisionUnknown,
  kSongLengthZero,
  kSongWithoutVoices,
  kSongWithoutMessages,
  kTempoMissing,
  kTempoLate,
  kTempoZero,
  kTempoUnlikely,
  kKeyUnknown,
  kMeterMissing,
  kMeterLate,
  kMeterWithoutTempo,
  kMeterZero,
  kDenominatorNoPower,
  kClickZero,
  kTimelineOutOfOrder,
  kTimelineDuplicate,
  kTimelineBeyondEnd,
  kTrackMissing,
  kTrackShared,
  kStatusInvalid,
  kDataByteInvalid,
  kMessageOutOfOrder,
  kMessageBeyondEnd,
  kNoteLeftOn,
  kEditReversed,
  kEditBeyondEnd,
  kVampCount,
  kRepeatCount,
  kTempoScale,
};

/// One finding. Texts are for people and hold names as they stand in the document, in any bytes.
struct Finding {
  FindingCode code;   ///< what was found
  Severity severity;  ///< that of its code
  std::string
      song;     ///< the song number; empty where the finding is about the whole document, or where it is so
  Place place;  ///< where in the song
  std::string problem;  ///< what is wrong and where, without the song, such as: the tempo at 480 is 0 us
  std::string remedy;   ///< what to do about it
};

/// A stable name of what was found, such as "tempo-zero".
ZUNA_API std::string_view CodeText(FindingCode code);

/// How bad it is.
ZUNA_API Severity SeverityOf(FindingCode code);

/// All codes, in the order of FindingCode.
ZUNA_API std::span<const Explanation> FindingExplanations();

}  // namespace zuna_toolkit
