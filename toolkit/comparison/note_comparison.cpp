// Finds out which notes of a voice were moved, changed, dropped and added (docs/keeping-shows-in-git.md).
#include <algorithm>
#include <tuple>
#include <utility>

#include "toolkit/comparison/internal/list_comparison.h"
#include "toolkit/comparison/internal/notes.h"

namespace zuna_toolkit {

namespace {

using Notes = std::vector<Note>;

/// What became of notes that are neither the same nor changed where they were.
struct NoteExplanation {
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

NoteExplanation Explained(const Notes& lost, const Notes& gained, bool pitches_first) {
  NoteExplanation explanation{lost, gained, {}};
  const auto take_pitches = [&] {
    TakeOtherPitches(explanation.lost, explanation.gained, explanation.result.transposed);
  };
  if (pitches_first) take_pitches();
  TakeMovedNotes(explanation.lost, explanation.gained, explanation.result);
  if (!pitches_first) take_pitches();
  return explanation;
}

/// The shorter one.
NoteExplanation BestExplanation(const Notes& lost, const Notes& gained) {
  NoteExplanation best = Explained(lost, gained, true);
  if (best.result.transposed.empty()) return best;
  NoteExplanation other = Explained(lost, gained, false);
  return other.Lines() < best.Lines() ? other : best;
}

void Append(std::vector<NotePair>& pairs, const std::vector<NotePair>& more) {
  pairs.insert(pairs.end(), more.begin(), more.end());
}

/// Sorted lists of notes, the lesser one first, so that both directions have the same pairs.
NoteComparison CompareSorted(Notes before, Notes after) {
  NoteComparison result;
  TakeMovedEnd(before, after, result.moved);
  TakeTransposedRuns(before, after, Transposed::kOnly, result.transposed);
  TakeEquivalent(before, after, IsLess, [](const Note&, const Note&) {});
  TakeEquivalent(before, after, HasLessPlace, [&](const Note& a, const Note& b) {
    result.changed.push_back({a, b});
  });
  TakeTransposedRuns(before, after, Transposed::kAndMore, result.transposed);
  NoteExplanation rest = BestExplanation(before, after);
  std::sort(rest.lost.begin(), rest.lost.end(), HasLessPlace);
  std::sort(rest.gained.begin(), rest.gained.end(), HasLessPlace);
  TakeSameStarts(rest.lost, rest.gained, result.transposed);
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
