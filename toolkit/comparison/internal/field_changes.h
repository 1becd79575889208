// The fields of many entries that change, in words.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/comparison/difference.h"

namespace zuna_toolkit {

/// What the changes of several entries have in common.
class FieldChanges {
 public:
  /// The fields of one entry more.
  void Add(const std::vector<FieldChange>& changes);

  /// Whether an entry with these changes can be told together with those that were added: they have the same
  /// fields, and a pitch that changes by the same interval.
  bool AreLike(const std::vector<FieldChange>& changes) const;

  /// Such as " are 2 semitones higher" (with "and" where `or_else` is empty), ": velocity 80 becomes 90,
  /// length is 10 lower" or " change"; empty where no field changes and `or_else` is.
  std::string ToString(const std::string& or_else) const;

 private:
  /// A field, as it changes in the first entry, and whether that holds for all of them.
  struct Common {
    FieldChange first;
    std::size_t entries = 1;
    bool same_before = true;
    bool same_after = true;
    bool same_increase = true;
  };

  std::string TextOf(const Common& field) const;

  std::vector<Common> fields_;
  std::size_t entries_ = 0;
};

}  // namespace zuna_toolkit
