// Finds out which notes of a voice were moved, changed, dropped and added (docs/keeping-shows-in-git.md).
#include <algorithm>
#include <iterator>
#include <span>
#include <tuple>
#include <utility>

#include "toolkit/comparison/internal/list_comparison.h"
#include "toolkit/comparison/internal/longest_common_subsequence.h"
#include "toolkit/comparison/internal/notes.h"

namespace zuna_toolkit {

namespace {

using Notes = std::vector<Note>;

/// How many pairs of notes one search for a subsequence may take: it bounds its memory to about a megabyte.
constexpr std::size_t kMostPairs = 16384;

auto PlaceOf(const Note& note) { return std::tuple(note.tick, note.channel, note.pitch); }

auto ValuesOf(const Note& note) {
  return std::tuple(note.channel, note.pitch, note.velocity, note.length, note.release_kind,
                    note.release_velocity);
}

bool IsLess(const Note& a, const Note& b) {
  return a.tick != b.tick ? a.tick < b.tick : ValuesOf(a) < ValuesOf(b);
}

bool HasLessPlace(const Note& a, const Note& b) { return PlaceOf(a) < PlaceOf(b); }

unsigned PitchOf(const Note& note) { return note.channel * 0x100U + note.pitch; }

/// How many notes both lists have.
std::size_t CountCommon(std::span<const Note> a, std::span<const Note> b) {
  std::size_t count = 0;
  for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
    if (IsLess(a[i], b[j])) {
      ++i;
    } else if (IsLess(b[j], a[i])) {
      ++j;
    } else {
      ++count;
      ++i;
      ++j;
    }
  }
  return count;
}

/// Where time was inserted or cut out, the rest of the voice moves as a whole. Takes out the longest ends of
/// both lists that are the same but for one shift of time, unless as many notes are the same without it.
void TakeMovedEnd(Notes& lost, Notes& gained, std::vector<NotePair>& moved) {
  if (lost.empty() || gained.empty()) return;
  const std::uint32_t shift = gained.back().tick - lost.back().tick;  // modulo 2^32
  if (shift == 0) return;
  const auto is_moved = [shift](const Note& a, const Note& b) {
    return b.tick - a.tick == shift && ValuesOf(a) == ValuesOf(b);
  };
  const auto [a, b] = std::mismatch(lost.rbegin(), lost.rend(), gained.rbegin(), gained.rend(), is_moved);
  const auto count = static_cast<std::size_t>(a - lost.rbegin());
  const std::span<const Note> all_lost(lost);
  const std::span<const Note> all_gained(gained);
  const std::size_t before_end =
      CountCommon(all_lost.first(lost.size() - count), all_gained.first(gained.size() - count));
  if (before_end + count <= CountCommon(all_lost, all_gained)) return;
  for (auto i = a.base(), j = b.base(); i != lost.end(); ++i, ++j) moved.push_back({*i, *j});
  lost.erase(a.base(), lost.end());
  gained.erase(b.base(), gained.end());
}

/// Looks for notes that moved in two lists that are in the order of time.
class MovedNotes {
 public:
  MovedNotes(Notes& lost, Notes& gained, NoteComparison& result)
      : lost_(lost),
        gained_(gained),
        result_(result),
        taken_lost_(lost.size()),
        taken_gained_(gained.size()) {}

  void Take() {
    if (lost_.empty() || gained_.empty()) return;
    for (Part part; part.lost_end < lost_.size() || part.gained_end < gained_.size();) {
      part = {part.lost_end, part.lost_end, part.gained_end, part.gained_end};
      while (Extend(part)) {
      }
      Align(part);
      const bool is_all = part.lost_end - part.lost_begin == lost_.size() &&
                          part.gained_end - part.gained_begin == gained_.size();
      if (!is_all) result_.in_parts = true;
    }
    RemoveTaken(lost_, taken_lost_);
    RemoveTaken(gained_, taken_gained_);
  }

 private:
  /// Notes of both lists from one time to another.
  struct Part {
    std::size_t lost_begin = 0;
    std::size_t lost_end = 0;
    std::size_t gained_begin = 0;
    std::size_t gained_end = 0;

    std::size_t pairs() const { return (lost_end - lost_begin + 1) * (gained_end - gained_begin + 1); }
    bool empty() const { return lost_begin == lost_end && gained_begin == gained_end; }
  };

  /// Adds the notes of the next time; false at the end, and where the part would become too large. Those of
  /// one time are one part however many they are.
  bool Extend(Part& part) const {
    const bool has_lost = part.lost_end < lost_.size();
    const bool has_gained = part.gained_end < gained_.size();
    if (!has_lost && !has_gained) return false;
    const std::uint32_t tick =
        !has_gained || (has_lost && lost_[part.lost_end].tick < gained_[part.gained_end].tick)
            ? lost_[part.lost_end].tick
            : gained_[part.gained_end].tick;
    Part longer = part;
    while (longer.lost_end < lost_.size() && lost_[longer.lost_end].tick == tick) ++longer.lost_end;
    while (longer.gained_end < gained_.size() && gained_[longer.gained_end].tick == tick) ++longer.gained_end;
    if (longer.pairs() > kMostPairs && !part.empty()) return false;
    part = longer;
    return true;
  }

  void Align(const Part& part) {
    if (part.pairs() > kMostPairs) return;  // All have one time: what moved is not among them.
    std::vector<unsigned> a;
    std::vector<unsigned> b;
    for (std::size_t i = part.lost_begin; i < part.lost_end; ++i) a.push_back(PitchOf(lost_[i]));
    for (std::size_t i = part.gained_begin; i < part.gained_end; ++i) b.push_back(PitchOf(gained_[i]));
    for (const auto& [i, j] : LongestCommonSubsequence(a, b)) {
      result_.moved.push_back({lost_[part.lost_begin + i], gained_[part.gained_begin + j]});
      taken_lost_[part.lost_begin + i] = true;
      taken_gained_[part.gained_begin + j] = true;
    }
  }

  Notes& lost_;
  Notes& gained_;
  NoteComparison& result_;
  std::vector<bool> taken_lost_;
  std::vector<bool> taken_gained_;
};

/// What became of notes that are neither the same nor changed where they were.
struct Explanation {
  Notes lost;
  Notes gained;
  NoteComparison result;

  /// About how many lines it takes.
  std::size_t Lines() const {
    const auto runs = [](const std::vector<NotePair>& pairs, auto step) {
      std::size_t count = 0;
      for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (i == 0 || step(pairs[i]) != step(pairs[i - 1])) ++count;
      }
      return count;
    };
    return lost.size() + gained.size() +
           runs(result.moved, [](const NotePair& pair) { return pair.after->tick - pair.before->tick; }) +
           runs(result.transposed,
                [](const NotePair& pair) { return pair.after->pitch - pair.before->pitch; });
  }
};

Explanation Explained(const Notes& lost, const Notes& gained, bool pitches_first) {
  Explanation explanation{lost, gained, {}};
  const auto take_pitches = [&] {
    TakeOtherPitches(explanation.lost, explanation.gained, explanation.result.transposed);
  };
  if (pitches_first) take_pitches();
  MovedNotes(explanation.lost, explanation.gained, explanation.result).Take();
  if (!pitches_first) take_pitches();
  return explanation;
}

/// The shorter one.
Explanation BestExplanation(const Notes& lost, const Notes& gained) {
  Explanation best = Explained(lost, gained, true);
  if (best.result.transposed.empty()) return best;
  Explanation other = Explained(lost, gained, false);
  return other.Lines() < best.Lines() ? other : best;
}

void Append(std::vector<NotePair>& pairs, const std::vector<NotePair>& more) {
  pairs.insert(pairs.end(), more.begin(), more.end());
}

/// Sorted lists of notes, the lesser one first, so that both directions have the same pairs.
NoteComparison CompareSorted(Notes before, Notes after) {
  NoteComparison result;
  TakeMovedEnd(before, after, result.moved);
  TakeTransposedRuns(before, after, result.transposed);
  TakeEquivalent(before, after, IsLess, [](const Note&, const Note&) {});
  TakeEquivalent(before, after, HasLessPlace, [&](const Note& a, const Note& b) {
    result.changed.push_back({a, b});
  });
  const Explanation rest = BestExplanation(before, after);
  Append(result.moved, rest.result.moved);
  Append(result.transposed, rest.result.transposed);
  result.in_parts = rest.result.in_parts;
  for (const Note& note : rest.lost) result.dropped.push_back({note, std::nullopt});
  for (const Note& note : rest.gained) result.added.push_back({std::nullopt, note});
  return result;
}

/// The same from the other side.
void Reverse(NoteComparison& result) {
  std::swap(result.dropped, result.added);
  for (auto* pairs : {&result.moved, &result.changed, &result.transposed, &result.dropped, &result.added}) {
    for (NotePair& pair : *pairs) std::swap(pair.before, pair.after);
  }
}

}  // namespace

NoteComparison CompareNotes(Notes before, Notes after) {
  std::sort(before.begin(), before.end(), IsLess);
  std::sort(after.begin(), after.end(), IsLess);
  const bool reversed =
      std::lexicographical_compare(after.begin(), after.end(), before.begin(), before.end(), IsLess);
  if (reversed) std::swap(before, after);
  NoteComparison result = CompareSorted(std::move(before), std::move(after));
  if (reversed) Reverse(result);
  for (auto* pairs : {&result.moved, &result.transposed, &result.dropped, &result.added}) {
    std::stable_sort(pairs->begin(), pairs->end(), [](const NotePair& a, const NotePair& b) {
      return IsLess(a.before ? *a.before : *a.after, b.before ? *b.before : *b.after);
    });
  }
  return result;
}

}  // namespace zuna_toolkit
