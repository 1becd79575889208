// The stable names of the kinds of differences.
#include <string>
#include <string_view>

#include "toolkit/comparison/difference.h"

namespace zuna_toolkit {

namespace {

std::string_view SubjectCode(Subject subject) {
  switch (subject) {
    case Subject::kShowName:
      return "show-name";
    case Subject::kLogLabel:
      return "log-label";
    case Subject::kIdentifier:
      return "identifier";
    case Subject::kTagPair:
      return "tag-pair";
    case Subject::kTrailingBytes:
      return "trailing-bytes";
    case Subject::kSequence:
      return "sequence";
    case Subject::kSong:
      return "song";
    case Subject::kSongName:
      return "song-name";
    case Subject::kDivision:
      return "division";
    case Subject::kSongLength:
      return "song-length";
    case Subject::kTimelineName:
      return "timeline-name";
    case Subject::kTimelineLength:
      return "timeline-length";
    case Subject::kVoice:
      return "voice";
    case Subject::kVoiceNumber:
      return "voice-number";
    case Subject::kVoiceName:
      return "voice-name";
    case Subject::kReservedField:
      return "reserved-field";
    case Subject::kMessage:
      return "message";
    case Subject::kMessageChannel:
      return "message-channel";
    case Subject::kDeltaTime:
      return "delta-time";
    case Subject::kTempo:
      return "tempo";
    case Subject::kBarLabel:
      return "bar-label";
    case Subject::kKey:
      return "key";
    case Subject::kPageNumber:
      return "page-number";
    case Subject::kMeter:
      return "meter";
    case Subject::kAttacca:
      return "attacca";
    case Subject::kVamp:
      return "vamp";
    case Subject::kRepeat:
      return "repeat";
    case Subject::kCut:
      return "cut";
    case Subject::kTranspose:
      return "transpose";
    case Subject::kTempoScale:
      return "tempo-scale";
    case Subject::kClick:
      return "click";
    case Subject::kFermata:
      return "fermata";
    case Subject::kMarker:
      return "marker";
    case Subject::kCaesura:
      return "caesura";
    case Subject::kEditLabel:
      return "edit-label";
    case Subject::kEditValue:
      return "edit-value";
    case Subject::kSecondWord:
      return "second-word";
    case Subject::kNote:
      return "note";
    case Subject::kOtherBytes:
      return "other-bytes";
    case Subject::kSongEdits:
      return "song-edits";
  }
  return "";
}

std::string_view ActionCode(Action action) {
  switch (action) {
    case Action::kAdded:
      return "added";
    case Action::kDropped:
      return "dropped";
    case Action::kChanged:
      return "changed";
    case Action::kCut:
      return "cut";
    case Action::kApproximated:
      return "approximated";
    case Action::kDefaulted:
      return "defaulted";
    case Action::kRenumbered:
      return "renumbered";
    case Action::kMerged:
      return "merged";
    case Action::kReplaced:
      return "replaced";
    case Action::kReordered:
      return "reordered";
    case Action::kMoved:
      return "moved";
    case Action::kRewritten:
      return "rewritten";
  }
  return "";
}

}  // namespace

std::string CodeText(const Difference& difference) {
  return std::string(SubjectCode(difference.subject)) + '-' + std::string(ActionCode(difference.action));
}

}  // namespace zuna_toolkit
