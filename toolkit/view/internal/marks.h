// Which entries of a list are marked because another list does not have them.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "toolkit/comparison/internal/list_comparison.h"

namespace zuna_toolkit {

/// The CSS classes of what only one of two compared songs has.
///@{
inline constexpr std::string_view kOnlyHere = "here";    ///< the song that is drawn
inline constexpr std::string_view kOnlyThere = "there";  ///< the other one
///@}

/// The entries that only one of two lists has. One that was changed or has moved is in both parts.
template <typename Entry>
struct Marks {
  std::vector<bool> only_here;           ///< of each entry of the list that is drawn
  std::vector<const Entry*> only_there;  ///< of the other list, in the order of time

  /// Whether the lists differ.
  bool any() const {
    return !only_there.empty() || std::find(only_here.begin(), only_here.end(), true) != only_here.end();
  }

  std::string_view ClassOf(std::size_t index) const { return only_here[index] ? kOnlyHere : ""; }
};

/// Compares two lists; without a second one, nothing is marked. The lists have to outlive the marks.
template <typename Entry>
Marks<Entry> MarksOf(const std::vector<Entry>& here, const std::vector<Entry>* there) {
  Marks<Entry> marks{std::vector<bool>(here.size()), {}};
  if (there == nullptr) return marks;
  const ListComparison<Entry> comparison(here, *there);
  for (const EntryPair<Entry>& pair : comparison.pairs()) {
    if (pair.before.entry != nullptr) marks.only_here[pair.before.index] = true;
    if (pair.after.entry != nullptr) marks.only_there.push_back(pair.after.entry);
  }
  std::stable_sort(marks.only_there.begin(), marks.only_there.end(), [](const Entry* a, const Entry* b) {
    return EntryTraits<Entry>::Tick(*a) < EntryTraits<Entry>::Tick(*b);
  });
  return marks;
}

}  // namespace zuna_toolkit
