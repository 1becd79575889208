// Finds out which entries of a list were changed, dropped and added.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace zuna_toolkit {

/// How entries of a type are compared: Tick() gives the time of one, Values() a tuple of its other fields.
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

/// Compares two lists as sorted multisets. What only one of them has is paired: entries of one time in the
/// order of their values; then entries of equal values that moved; then, where as many are left on both
/// sides, the rest in order. Memory is linear, time is O(n log n).
template <typename Entry>
class ListComparison {
 public:
  using Entries = std::vector<Indexed<Entry>>;
  using Traits = EntryTraits<Entry>;

  ListComparison(const std::vector<Entry>& before, const std::vector<Entry>& after) {
    const Entries old_entries = Sorted(before);
    const Entries new_entries = Sorted(after);
    std::set_difference(old_entries.begin(), old_entries.end(), new_entries.begin(), new_entries.end(),
                        std::back_inserter(lost_), ByTick);
    std::set_difference(new_entries.begin(), new_entries.end(), old_entries.begin(), old_entries.end(),
                        std::back_inserter(gained_), ByTick);
    PairWhere([](const Entry& a, const Entry& b) { return Traits::Tick(a) < Traits::Tick(b); });
    std::sort(lost_.begin(), lost_.end(), ByValues);
    std::sort(gained_.begin(), gained_.end(), ByValues);
    PairWhere([](const Entry& a, const Entry& b) { return Traits::Values(a) < Traits::Values(b); });
    PairRest();
  }

  /// First those that the first list has, in its order, then those that were added. None where one list holds
  /// the entries of the other, in whatever order.
  const std::vector<EntryPair<Entry>>& pairs() const { return pairs_; }

 private:
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

  /// Pairs entries that are equivalent in the order `less`, in which both rests are sorted.
  template <typename Less>
  void PairWhere(Less less) {
    Entries lost;
    Entries gained;
    auto a = lost_.begin();
    auto b = gained_.begin();
    while (a != lost_.end() && b != gained_.end()) {
      if (less(*a->entry, *b->entry)) {
        lost.push_back(*a++);
      } else if (less(*b->entry, *a->entry)) {
        gained.push_back(*b++);
      } else {
        pairs_.push_back({*a++, *b++});
      }
    }
    lost.insert(lost.end(), a, lost_.end());
    gained.insert(gained.end(), b, gained_.end());
    lost_ = std::move(lost);
    gained_ = std::move(gained);
  }

  void PairRest() {
    std::sort(lost_.begin(), lost_.end(), ByTick);
    std::sort(gained_.begin(), gained_.end(), ByTick);
    const bool paired = lost_.size() == gained_.size();
    for (std::size_t i = 0; i < lost_.size(); ++i) {
      pairs_.push_back({lost_[i], paired ? gained_[i] : Indexed<Entry>()});
    }
    for (std::size_t i = 0; i < gained_.size() && !paired; ++i) pairs_.push_back({{}, gained_[i]});
    std::sort(pairs_.begin(), pairs_.end(), InOrder);
  }

  static bool InOrder(const EntryPair<Entry>& a, const EntryPair<Entry>& b) {
    const bool a_added = a.before.entry == nullptr;
    const bool b_added = b.before.entry == nullptr;
    if (a_added != b_added) return b_added;
    return a_added ? a.after.index < b.after.index : a.before.index < b.before.index;
  }

  Entries lost_;
  Entries gained_;
  std::vector<EntryPair<Entry>> pairs_;
};

}  // namespace zuna_toolkit
