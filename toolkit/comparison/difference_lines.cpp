// The differences of two documents as lines of text.
#include "toolkit/comparison/difference_lines.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/comparison/internal/field_changes.h"
#include "toolkit/comparison/nouns.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kMostOneByOne = 3;  // differences alike that get lines of their own

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

/// "bar 12 (tick 5760)"
std::string BarAndTick(const Place& place) {
  const std::string tick = "tick " + std::to_string(place.tick.value_or(0));
  return place.bar.empty() ? tick : "bar " + place.bar + " (" + tick + ')';
}

std::int64_t ShiftOf(const Difference& difference) {
  const Place& place = difference.place;
  return std::int64_t{place.after_tick.value_or(0)} - std::int64_t{place.tick.value_or(0)};
}

/// "480 ticks later"
std::string ShiftText(std::int64_t shift) {
  const auto ticks = static_cast<std::size_t>(shift < 0 ? -shift : shift);
  return Counted(ticks, "tick", "ticks") + (shift < 0 ? " earlier" : " later");
}

/// Whether many of them can share a line.
bool AreAlike(const Difference& a, const Difference& b) {
  const bool same_kind = a.subject == b.subject && a.action == b.action && a.song == b.song &&
                         a.place.voice == b.place.voice && a.place.list == b.place.list && a.where == b.where;
  return same_kind && a.place.tick && b.place.tick && a.count == 1 && b.count == 1 &&
         (a.action != Action::kMoved || ShiftOf(a) == ShiftOf(b));
}

/// Whether a text stands between quotation marks.
bool IsName(Subject subject) {
  return subject == Subject::kShowName || subject == Subject::kLogLabel || subject == Subject::kSongName ||
         subject == Subject::kVoiceName;
}

/// Whether it is about bytes of the file that are in no document.
bool IsOfFile(Subject subject) {
  return subject == Subject::kTrailingBytes || subject == Subject::kOtherBytes;
}

/// Whether it is about a song, or all its edits, as a whole.
bool IsAboutSong(Subject subject) { return subject == Subject::kSong || subject == Subject::kSongEdits; }

std::string SongLine(const Difference& difference) {
  const std::string song = "song " + difference.song + ' ';
  if (difference.action == Action::kAdded) return song + Quoted(difference.after) + " is added";
  const std::string before = song + Quoted(difference.before);
  return before +
         (difference.action == Action::kDropped ? " is removed" : " becomes song " + difference.after);
}

std::string SongEditsLine(const Difference& difference) {
  const std::string edits = "edits of song " + difference.song + ' ';
  if (difference.action == Action::kAdded) return edits + Quoted(difference.after) + " are added";
  const std::string before = edits + Quoted(difference.before);
  return before + (difference.action == Action::kDropped ? " are removed"
                                                         : " become those of song " + difference.after);
}

std::string VoiceLine(const Difference& difference) {
  switch (difference.action) {
    case Action::kAdded:
      return difference.where + " is added";
    case Action::kDropped:
      return difference.where + " is removed";
    default:
      return difference.where + ": many notes differ; those that moved far are told as removed and added";
  }
}

/// What became of it, after what it is and where.
std::string FateText(const Difference& difference) {
  const bool is_name = IsName(difference.subject);
  const std::string before = is_name ? Quoted(difference.before) : difference.before;
  const std::string after = is_name ? Quoted(difference.after) : difference.after;
  switch (difference.action) {
    case Action::kAdded:
      return " is added: " + after;
    case Action::kDropped:
      return " is removed: " + before;
    case Action::kMoved:
      return " moves to tick " + std::to_string(difference.place.after_tick.value_or(0)) + ": " +
             (before == after ? before : before + " becomes " + after);
    default:
      return ": " + before + " becomes " + after;
  }
}

/// The kind of the edits in a list of a song log; none for another list.
std::optional<Subject> KindOfEdit(std::string_view list) {
  constexpr std::pair<std::string_view, Subject> kKinds[] = {
      {"vamps", Subject::kVamp},
      {"repeats", Subject::kRepeat},
      {"cuts", Subject::kCut},
      {"transposes", Subject::kTranspose},
      {"tempoScales", Subject::kTempoScale},
      {"clicks", Subject::kClick},
      {"fermatas", Subject::kFermata},
      {"markers", Subject::kMarker},
      {"caesuras", Subject::kCaesura},
  };
  for (const auto& [name, kind] : kKinds) {
    if (name == list) return kind;
  }
  return std::nullopt;
}

/// Whether it is about a field of an edit that both documents have.
bool IsFieldOfEdit(const Difference& difference) {
  return KindOfEdit(difference.place.list) && !difference.changes.empty() &&
         difference.action != Action::kMoved;
}

/// What a difference calls the thing that differs.
Noun NounOf(const Difference& difference) {
  return NounOf(KindOfEdit(difference.place.list).value_or(difference.subject));
}

std::string VoicePrefix(const Difference& difference) {
  return difference.where.empty() ? "" : difference.where + ": ";
}

/// A difference that shares its line with no other.
std::string OneText(const Difference& difference) {
  const Noun noun = NounOf(difference);
  if (difference.subject == Subject::kSong) return SongLine(difference);
  if (difference.subject == Subject::kSongEdits) return SongEditsLine(difference);
  const std::string voice = VoicePrefix(difference);
  if (difference.subject == Subject::kVoiceNumber) return difference.before + " becomes " + difference.after;
  if (difference.action == Action::kReordered) return voice + "the order of the " + noun.many + " changes";
  if (difference.subject == Subject::kVoice) return VoiceLine(difference);
  if (IsOfFile(difference.subject)) return noun.many + FateText(difference);
  std::string text = voice + noun.one;
  if (difference.count > 1) text = voice + Counted(difference.count, noun.one, noun.many);
  if (difference.place.tick) {
    text += (difference.count > 1 ? " from " : " at ") + BarAndTick(difference.place);
  }
  if (IsFieldOfEdit(difference)) {
    FieldChanges changes;
    changes.Add(difference.changes);
    return text + changes.ToString(" changes");
  }
  return text + FateText(difference);
}

/// Several that are alike.
std::string ManyText(const Difference& first, const Difference& last, std::size_t count,
                     const FieldChanges& changes) {
  const Noun noun = NounOf(first);
  std::string text = VoicePrefix(first) + Counted(count, noun.one, noun.many) + " from " +
                     BarAndTick(first.place) + " to " + BarAndTick(last.place);
  if (IsFieldOfEdit(first)) return text + changes.ToString(" change");
  switch (first.action) {
    case Action::kAdded:
      return text + " are added";
    case Action::kDropped:
      return text + " are removed";
    case Action::kMoved:
      return text + " move " + ShiftText(ShiftOf(first)) + changes.ToString("");
    default:
      return text + changes.ToString(" change");
  }
}

DifferenceLine LineOf(const Difference& difference, std::string text) {
  return {difference.song, IsAboutSong(difference.subject), std::move(text)};
}

}  // namespace

/// Differences alike that follow each other.
struct DifferenceLines::Run {
  Difference first;
  Difference last;
  std::size_t count = 0;
  std::vector<DifferenceLine> lines;  ///< of the first few, one each
  FieldChanges changes;

  bool IsContinuedBy(const Difference& difference) const {
    return AreAlike(first, difference) &&
           (difference.action == Action::kMoved || changes.AreLike(difference.changes));
  }
};

DifferenceLines::DifferenceLines(DifferenceLineSink sink) : sink_(std::move(sink)) {}

DifferenceLines::~DifferenceLines() = default;

void DifferenceLines::Add(const Difference& difference) {
  if (run_ && !run_->IsContinuedBy(difference)) Finish();
  if (!run_) run_ = std::make_unique<Run>(Run{difference, difference, 0, {}, {}});
  run_->last = difference;
  run_->changes.Add(difference.changes);
  if (++run_->count <= kMostOneByOne) run_->lines.push_back(LineOf(difference, OneText(difference)));
}

void DifferenceLines::Finish() {
  if (!run_) return;
  const std::unique_ptr<Run> run = std::move(run_);
  if (run->count <= kMostOneByOne) {
    for (const DifferenceLine& line : run->lines) sink_(line);
  } else {
    sink_(LineOf(run->first, ManyText(run->first, run->last, run->count, run->changes)));
  }
}

}  // namespace zuna_toolkit
