// How much all inputs of a command lose.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/comparison/loss_text.h"

namespace zuna_cli {

/// The losses of all inputs by their kinds.
class LossTotals {
 public:
  /// Adds the losses of one input.
  void Add(const std::vector<zuna_toolkit::LossKind>& losses);

  /// A line for each kind, ready for standard error: how many of it in how many files. Those that do no harm
  /// come last.
  std::vector<std::string> Lines() const;

 private:
  struct Total {
    zuna_toolkit::LossKind kind;
    std::size_t files;
  };

  std::vector<Total> totals_;
};

}  // namespace zuna_cli
