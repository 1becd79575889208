// Work on many inputs by several workers.
#pragma once

#include <cstddef>
#include <functional>

#include "cli/batch/outcome.h"

namespace zuna_cli {

/// Works on the input of this number.
using Work = std::function<Outcome(std::size_t)>;

/// Takes the outcomes one after the other, in the order of the inputs. Returns whether to go on; it gets the
/// outcomes of those that were begun all the same.
using OutcomeSink = std::function<bool(Outcome&&)>;

/// Whether no further input is to be begun.
using StopRequest = std::function<bool()>;

/// Calls `work` for the inputs 0 to `count` - 1, by `workers` at a time, each a thread, and hands the
/// outcomes to `sink`, in the caller's thread. At most twice as many outcomes as workers wait for their turn.
/// Neither function may throw. Where the system gives fewer threads there are fewer workers; with one worker,
/// or without any thread, everything is done in the caller's. Throws std::bad_alloc before anything is begun.
void WorkInOrder(std::size_t count, unsigned workers, const Work& work, const OutcomeSink& sink,
                 const StopRequest& stop);

}  // namespace zuna_cli
