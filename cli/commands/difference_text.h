// The differences of two documents as lines.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "cli/commands/field_changes.h"
#include "toolkit/comparison/difference.h"

namespace zuna_cli {

/// Makes lines of differences, which are grouped by song. Many alike that follow each other share a line.
class DifferenceLines {
 public:
  /// `write` takes one line or several with their line breaks.
  explicit DifferenceLines(std::function<void(const std::string&)> write) : write_(std::move(write)) {}

  /// Takes the next difference in the order of the comparison.
  void Add(const zuna_toolkit::Difference& difference);

  /// Called after the last one.
  void Finish();

 private:
  /// Differences alike that follow each other.
  struct Run {
    zuna_toolkit::Difference first;
    zuna_toolkit::Difference last;
    std::size_t count = 0;
    std::string lines;  ///< of the first few, one each
    FieldChanges changes;
  };

  bool Continues(const zuna_toolkit::Difference& difference) const;

  std::function<void(const std::string&)> write_;
  std::optional<Run> run_;
  std::optional<std::string> song_;  ///< whose differences are written
};

}  // namespace zuna_cli
