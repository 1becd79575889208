// Runs a command over its inputs and tells what became of them.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/batch/input_options.h"
#include "cli/batch/pipeline.h"
#include "cli/shared/context.h"

namespace zuna_cli {

/// What a command does with its inputs.
struct Batch {
  Work work;  ///< on the input of this number; what it throws becomes the failure of that input
  std::function<void(const Outcome&)> take;  ///< gets every outcome, in the order of the inputs; may be empty
  std::vector<std::string>
      done;  ///< what the summary calls inputs that are done, by group; empty for no summary
  /// How an input ended in an earlier run: kDone or kFailed, or nothing where that is not known; may be
  /// empty.
  std::function<std::optional<Status>(std::size_t)> earlier;
  std::string to_go_on;  ///< what to do where inputs are left that were not begun; empty for nothing
  bool writes = false;   ///< signals wait until files that are begun are finished
};

/// Works on the inputs 0 to `count` - 1. Texts and messages come in the order of the inputs, whatever the
/// number of workers. A summary and the totals of the losses follow, and failures come last and set the exit
/// code. A single input fails as a command of its own.
void RunAll(std::size_t count, const InputOptions& options, Context& context, const Batch& batch);

}  // namespace zuna_cli
