// What is said about losses.
#include "toolkit/comparison/loss_text.h"

#include "toolkit/comparison/nouns.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

/// What is lost of a kind, in words.
Noun LossNoun(Subject subject, Action action) {
  switch (subject) {
    case Subject::kVoice:
      if (action == Action::kRenumbered) return NounOf(Subject::kVoiceNumber);
      if (action == Action::kReordered) return {"order of tracks", "orders of tracks"};
      return {"separate voice", "separate voices"};
    case Subject::kBarLabel:
      return {"whole bar label", "whole bar labels"};
    case Subject::kCaesura:
      return {"caesura with a second word above 1", "caesuras with a second word above 1"};
    case Subject::kEditValue:
      return {"value beyond 8 bits", "values beyond 8 bits"};
    case Subject::kDivision:
      if (action == Action::kDefaulted) return {"song without a division", "songs without a division"};
      return NounOf(subject);
    case Subject::kSong:
      return {"song of a repeated number", "songs of repeated numbers"};
    default:
      return NounOf(subject);
  }
}

/// "3 additional tempos"
std::string CountText(const LossKind& kind) {
  const Noun noun = LossNoun(kind.subject, kind.action);
  const std::string more = kind.action == Action::kAdded ? "additional " : "";
  std::string count = Counted(kind.count, more + noun.one, more + noun.many);
  if (kind.action != Action::kApproximated) return count;
  return (kind.count == 1 ? "the exact value of " : "the exact values of ") + count;
}

/// Whether this is no loss of what a file has: its companion lacks it.
bool IsLacking(const LossKind& kind) {
  return kind.subject == Subject::kDivision && kind.action == Action::kDefaulted;
}

/// The beginning of a line about a loss.
std::string NotKept(const LossKind& kind) {
  if (IsLacking(kind)) return "";
  return kind.is_up ? "the current versions do not keep " : "format 0.0 does not keep ";
}

/// Why a loss of a kind does no harm, or does where it might do none; empty for others.
std::string HarmlessText(const LossKind& kind) {
  if (IsLacking(kind)) return "";
  if (!kind.is_harmless && kind.subject == Subject::kShowName) return " (no log beside it has this)";
  if (!kind.is_harmless && kind.subject == Subject::kDivision) return " (no show beside it has this)";
  if (!kind.is_harmless) return "";
  if (kind.subject == Subject::kShowName) return " (up takes this from the log)";
  if (kind.subject == Subject::kDivision) return " (up takes this from the show)";
  return " (the music is the same)";
}

/// An entry of a timeline with its time.
std::string EntryText(Subject subject, const std::string& text, std::optional<std::uint32_t> tick) {
  const std::string entry = subject == Subject::kBarLabel ? "label " + text : text;
  return tick ? entry + " at " + std::to_string(*tick) : entry;
}

std::string TimelineLossText(const Difference& loss) {
  if (loss.action == Action::kReordered) return "out of order";
  if (loss.action == Action::kAdded) return EntryText(loss.subject, loss.after, loss.place.tick);
  const std::string before = EntryText(loss.subject, loss.before, loss.place.tick);
  if (loss.action == Action::kDropped) return before + " is dropped";
  return before + " becomes " + EntryText(loss.subject, loss.after, loss.place.after_tick);
}

std::string VoiceLossText(const Difference& loss) {
  const std::string at = loss.place.tick ? " at " + std::to_string(*loss.place.tick) : "";
  switch (loss.subject) {
    case Subject::kReservedField:
      return loss.where + ": " + loss.before;
    case Subject::kVoice:
      if (loss.action == Action::kRenumbered) return loss.before + " becomes " + loss.after;
      return loss.where + " joins " + loss.after;
    case Subject::kVoiceName:
      return loss.where + " becomes \"" + loss.after + '"';
    default:
      return loss.where + at + ": " + loss.before + " becomes " + loss.after;
  }
}

/// The loss itself, without the song.
std::string DetailText(const Difference& loss, bool is_harmless) {
  switch (loss.subject) {
    case Subject::kShowName:
      return '"' + loss.before +
             (is_harmless ? "\"; up takes it from the log" : "\"; no log beside it has this");
    case Subject::kDivision:
      if (loss.action == Action::kDefaulted) return "the show has none; --division gives one";
      return loss.before + (is_harmless ? "; up takes it from the show" : "; no show beside it has this");
    case Subject::kFermata:
    case Subject::kAttacca:
      return loss.before + "; copy-fermatas brings it back";
    case Subject::kEditLabel:
      return loss.before;
    case Subject::kCaesura:
      return loss.before + " is dropped";
    case Subject::kVoice:
    case Subject::kVoiceName:
    case Subject::kReservedField:
    case Subject::kMessageChannel:
    case Subject::kDeltaTime:
      return VoiceLossText(loss);
    case Subject::kTempo:
    case Subject::kBarLabel:
    case Subject::kKey:
    case Subject::kPageNumber:
    case Subject::kMeter:
      return TimelineLossText(loss);
    default:
      return loss.before + " becomes " + loss.after;
  }
}

/// A loss of the way up that gets a line of its own, without its code; empty for any other.
std::string OwnText(const Difference& loss) {
  const std::string song = "song " + NumberText(loss.song) + ": ";
  if (loss.subject == Subject::kBarLabel && loss.action == Action::kCut) {
    return song + "the label at " + std::to_string(loss.place.tick.value_or(0)) + " is cut: " + loss.before +
           " becomes " + loss.after;
  }
  if (loss.subject == Subject::kVoice && loss.action == Action::kReordered) {
    return song + "the order of the tracks is not kept: " + loss.before + " becomes " + loss.after;
  }
  if (loss.subject == Subject::kVoice && loss.action == Action::kMerged) {
    return song + std::to_string(loss.count) + " tracks share id " +
           std::to_string(loss.place.voice.value_or(0)) + " and become one voice named " + loss.after + ": " +
           loss.before;
  }
  if (loss.subject == Subject::kSong) {
    return Counted(loss.count, "song was", "songs were") + " replaced by a later song of the same number";
  }
  if (loss.subject == Subject::kSequence) {
    return Counted(loss.count, "list was", "lists were") + " replaced by a later list of the same kind";
  }
  if (loss.subject == Subject::kTrailingBytes) {
    return Counted(loss.count, "byte after the last song is", "bytes after the last song are") + " not kept";
  }
  return "";
}

}  // namespace

bool IsInCompanion(Subject subject) { return subject == Subject::kShowName || subject == Subject::kDivision; }

std::string OwnLine(const Difference& loss) {
  const std::string text = OwnText(loss);
  return text.empty() ? "" : WithCode(text, CodeText(loss));
}

std::string KindLine(const LossKind& kind, const Difference& first) {
  const std::string song = first.song.empty() ? "" : "song " + NumberText(first.song) + ": ";
  return WithCode(NotKept(kind) + CountText(kind) + " (" + song + DetailText(first, kind.is_harmless) + ")",
                  kind.code);
}

std::string KindsText(const std::vector<LossKind>& kinds) {
  std::string list;
  for (const LossKind& kind : kinds) AppendListed(list, CountText(kind));
  return list;
}

std::string TotalLine(const LossKind& kind) {
  return WithCode(NotKept(kind) + CountText(kind) + HarmlessText(kind), kind.code);
}

}  // namespace zuna_toolkit
