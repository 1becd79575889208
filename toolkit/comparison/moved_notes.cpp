// Finds notes that begin at another time.
#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "toolkit/comparison/internal/longest_common_subsequence.h"
#include "toolkit/comparison/internal/notes.h"

namespace zuna_toolkit {

namespace {

using Notes = std::vector<Note>;

/// How many pairs of notes one search for a subsequence may take: it bounds its memory to about a megabyte.
constexpr std::size_t kMostPairs = 16384;

unsigned PitchOf(const Note& note) { return note.channel * 0x100U + note.pitch; }

/// How many notes both lists have in the order `less`, in which both are sorted.
template <typename Less>
std::size_t CountCommon(std::span<const Note> a, std::span<const Note> b, Less less) {
  std::size_t count = 0;
  for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
    if (less(a[i], b[j])) {
      ++i;
    } else if (less(b[j], a[i])) {
      ++j;
    } else {
      ++count;
      ++i;
      ++j;
    }
  }
  return count;
}

/// Takes out the longest ends of both lists of which each pair of notes `is_moved`, unless there are less
/// than `fewest` pairs, or as many notes are equivalent in the order `less` without it.
template <typename IsMoved, typename Less>
void TakeEnd(Notes& lost, Notes& gained, std::vector<NotePair>& moved, std::size_t fewest, IsMoved is_moved,
             Less less) {
  const auto [a, b] = std::mismatch(lost.rbegin(), lost.rend(), gained.rbegin(), gained.rend(), is_moved);
  const auto count = static_cast<std::size_t>(a - lost.rbegin());
  if (count < fewest) return;
  const std::span<const Note> all_lost(lost);
  const std::span<const Note> all_gained(gained);
  const std::size_t before_end =
      CountCommon(all_lost.first(lost.size() - count), all_gained.first(gained.size() - count), less);
  if (before_end + count <= CountCommon(all_lost, all_gained, less)) return;
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

}  // namespace

void TakeMovedEnd(Notes& lost, Notes& gained, std::vector<NotePair>& moved) {
  if (lost.empty() || gained.empty()) return;
  const std::uint32_t shift = gained.back().tick - lost.back().tick;  // modulo 2^32
  if (shift == 0) return;
  const auto is_only_moved = [shift](const Note& a, const Note& b) {
    return b.tick - a.tick == shift && ValuesOf(a) == ValuesOf(b);
  };
  TakeEnd(lost, gained, moved, 1, is_only_moved, IsLess);
  if (lost.empty() || gained.empty() || gained.back().tick - lost.back().tick != shift) return;
  const int interval = gained.back().pitch - lost.back().pitch;
  const auto is_moved = [shift, interval](const Note& a, const Note& b) {
    return b.tick - a.tick == shift && a.channel == b.channel && b.pitch - a.pitch == interval;
  };
  TakeEnd(lost, gained, moved, kFewestOfARun, is_moved, HasLessPlace);
}

void TakeMovedNotes(Notes& lost, Notes& gained, NoteComparison& result) {
  MovedNotes(lost, gained, result).Take();
}

}  // namespace zuna_toolkit
