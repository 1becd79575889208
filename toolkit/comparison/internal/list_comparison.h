// Finds out which entries of a list were changed, dropped and added.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/comparison/difference.h"

namespace zuna_toolkit {

/// How entries of a type are compared: Tick() gives the time of one, Values() a tuple of its other
/// fields, Text() its description.
template <typename Entry>
struct EntryTraits;

/// An entry of a list with its place there.
template <typename Entry>
struct Indexed {
  const Entry* entry = nullptr;
  std::size_t index = 0;
};

/// What became of an entry. One of the two sides may be missing (a null entry).
template <typename Entry>
struct EntryPair {
  Indexed<Entry> before;
  Indexed<Entry> after;
};

/// Takes out of both lists the items that are equivalent in the order `less`, in which both are sorted, and
/// hands them to `take(a, b)`.
template <typename Item, typename Less, typename Take>
void TakeEquivalent(std::vector<Item>& lost, std::vector<Item>& gained, Less less, Take take) {
  std::vector<Item> lost_rest;
  std::vector<Item> gained_rest;
  auto a = lost.begin();
  auto b = gained.begin();
  while (a != lost.end() && b != gained.end()) {
    if (less(*a, *b)) {
      lost_rest.push_back(*a++);
    } else if (less(*b, *a)) {
      gained_rest.push_back(*b++);
    } else {
      take(*a++, *b++);
    }
  }
  lost_rest.insert(lost_rest.end(), a, lost.end());
  gained_rest.insert(gained_rest.end(), b, gained.end());
  lost = std::move(lost_rest);
  gained = std::move(gained_rest);
}

/// How ends of lists are compared that are the same but for one shift of time.
enum class MovedEnds {
  kAreChanges,  ///< entry by entry
  kAreMoved,    ///< as a whole: time was inserted or cut out before them
};

/// Compares two lists as sorted multisets. What only one of them has is paired: entries of one time, in the
/// order of their lists; then entries of equal values that moved. The rest was dropped and added. Memory is
/// linear, time is O(n log n).
template <typename Entry>
class ListComparison {
 public:
  using Entries = std::vector<Indexed<Entry>>;
  using Traits = EntryTraits<Entry>;

  ListComparison(const std::vector<Entry>& before, const std::vector<Entry>& after,
                 MovedEnds ends = MovedEnds::kAreChanges)
      : lost_(Sorted(before)), gained_(Sorted(after)), places_(before.size(), kNoPlace) {
    if (ends == MovedEnds::kAreMoved) PairMovedEnd();
    PairWhere(ByTick, [&](const auto& a, const auto& b) { places_[a.index] = b.index; });
    std::sort(lost_.begin(), lost_.end(), InListOrder);
    std::sort(gained_.begin(), gained_.end(), InListOrder);
    PairWhere(EarlierTick, [&](const auto& a, const auto& b) {
      places_[a.index] = b.index;
      pairs_.push_back({a, b});
    });
    std::sort(lost_.begin(), lost_.end(), ByValues);
    std::sort(gained_.begin(), gained_.end(), ByValues);
    PairWhere(LowerValues, [&](const auto& a, const auto& b) { pairs_.push_back({a, b}); });
    for (const Indexed<Entry>& entry : lost_) pairs_.push_back({entry, {}});
    for (const Indexed<Entry>& entry : gained_) pairs_.push_back({{}, entry});
    std::sort(pairs_.begin(), pairs_.end(), InOrder);
  }

  /// First those that the first list has, in its order, then those that were added. None where one list holds
  /// the entries of the other, in whatever order.
  const std::vector<EntryPair<Entry>>& pairs() const { return pairs_; }

  /// Whether the entries that kept their times have another order in the second list.
  bool reordered() const {
    std::size_t next = 0;
    for (const std::size_t place : places_) {
      if (place == kNoPlace) continue;
      if (place < next) return true;
      next = place;
    }
    return false;
  }

 private:
  static constexpr std::size_t kNoPlace = std::numeric_limits<std::size_t>::max();

  static bool EarlierTick(const Indexed<Entry>& a, const Indexed<Entry>& b) {
    return Traits::Tick(*a.entry) < Traits::Tick(*b.entry);
  }

  static bool LowerValues(const Indexed<Entry>& a, const Indexed<Entry>& b) {
    return Traits::Values(*a.entry) < Traits::Values(*b.entry);
  }

  static bool InListOrder(const Indexed<Entry>& a, const Indexed<Entry>& b) {
    if (Traits::Tick(*a.entry) != Traits::Tick(*b.entry)) return EarlierTick(a, b);
    return a.index < b.index;
  }

  static bool ByTick(const Indexed<Entry>& a, const Indexed<Entry>& b) {
    if (Traits::Tick(*a.entry) != Traits::Tick(*b.entry))
      return Traits::Tick(*a.entry) < Traits::Tick(*b.entry);
    return Traits::Values(*a.entry) < Traits::Values(*b.entry);
  }

  static bool ByValues(const Indexed<Entry>& a, const Indexed<Entry>& b) {
    const auto values_a = Traits::Values(*a.entry);
    const auto values_b = Traits::Values(*b.entry);
    if (values_a != values_b) return values_a < values_b;
    return Traits::Tick(*a.entry) < Traits::Tick(*b.entry);
  }

  static Entries Sorted(const std::vector<Entry>& list) {
    Entries entries;
    entries.reserve(list.size());
    for (const Entry& entry : list) entries.push_back({&entry, entries.size()});
    std::stable_sort(entries.begin(), entries.end(), ByTick);
    return entries;
  }

  /// Unless as many entries at these ends keep their times.
  void PairMovedEnd() {
    if (lost_.empty() || gained_.empty()) return;
    const std::uint32_t shift =  // modulo 2^32
        Traits::Tick(*gained_.back().entry) - Traits::Tick(*lost_.back().entry);
    const auto is_moved = [shift](const Indexed<Entry>& a, const Indexed<Entry>& b) {
      return static_cast<std::uint32_t>(Traits::Tick(*b.entry) - Traits::Tick(*a.entry)) == shift &&
             Traits::Values(*a.entry) == Traits::Values(*b.entry);
    };
    const auto [a, b] =
        std::mismatch(lost_.rbegin(), lost_.rend(), gained_.rbegin(), gained_.rend(), is_moved);
    Entries kept;
    std::set_intersection(a.base(), lost_.end(), gained_.begin(), gained_.end(), std::back_inserter(kept),
                          ByTick);
    if (shift == 0 || kept.size() >= static_cast<std::size_t>(a - lost_.rbegin())) return;
    for (auto i = a.base(), j = b.base(); i != lost_.end(); ++i, ++j) {
      places_[i->index] = j->index;
      pairs_.push_back({*i, *j});
    }
    lost_.erase(a.base(), lost_.end());
    gained_.erase(b.base(), gained_.end());
  }

  template <typename Less, typename Take>
  void PairWhere(Less less, Take take) {
    TakeEquivalent(lost_, gained_, less, take);
  }

  static bool InOrder(const EntryPair<Entry>& a, const EntryPair<Entry>& b) {
    const bool a_added = a.before.entry == nullptr;
    const bool b_added = b.before.entry == nullptr;
    if (a_added != b_added) return b_added;
    return a_added ? a.after.index < b.after.index : a.before.index < b.before.index;
  }

  Entries lost_;
  Entries gained_;
  std::vector<std::size_t> places_;  ///< in the second list, of the entries of the first that kept their time
  std::vector<EntryPair<Entry>> pairs_;
};

/// The entries that differ, where those of `before` for which `is_kept(entry)` holds stand in the same order
/// in `after`; none where there are more or fewer of them there.
template <typename Entry, typename IsKept>
std::optional<std::vector<EntryPair<Entry>>> PairsInOrder(const std::vector<Entry>& before,
                                                          const std::vector<Entry>& after, IsKept is_kept) {
  using Traits = EntryTraits<Entry>;
  if (std::count_if(before.begin(), before.end(), is_kept) != std::ssize(after)) return std::nullopt;
  std::vector<EntryPair<Entry>> pairs;
  std::size_t next = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    EntryPair<Entry> pair{{&before[i], i}, {}};
    if (is_kept(before[i])) {
      pair.after = {&after[next], next};
      ++next;
      const Entry& kept = *pair.after.entry;
      if (Traits::Tick(before[i]) == Traits::Tick(kept) &&
          Traits::Values(before[i]) == Traits::Values(kept)) {
        continue;
      }
    }
    pairs.push_back(pair);
  }
  return pairs;
}

/// The difference that a pair of entries of the list called `list` makes.
template <typename Entry>
Difference EntryDifference(Subject subject, std::string_view list, const EntryPair<Entry>& pair) {
  using Traits = EntryTraits<Entry>;
  const Entry* before = pair.before.entry;
  const Entry* after = pair.after.entry;
  const Indexed<Entry>& shown = before == nullptr ? pair.after : pair.before;
  Difference difference;
  difference.subject = subject;
  difference.place.list = list;
  difference.place.index = shown.index;
  difference.place.tick = Traits::Tick(*shown.entry);
  if (before != nullptr) difference.before = Traits::Text(*before);
  if (after != nullptr) difference.after = Traits::Text(*after);
  if (before == nullptr) {
    difference.action = Action::kAdded;
  } else if (after == nullptr) {
    difference.action = Action::kDropped;
  } else {
    difference.place.after_tick = Traits::Tick(*after);
  }
  return difference;
}

}  // namespace zuna_toolkit
