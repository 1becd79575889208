// Random current logs.

#pragma once

#include <random>

#include "CL/change_log.h"

namespace zuna_test {

/// What a random log looks like.
struct LogOptions {
  unsigned max_songs = 4;
  unsigned max_events = 8;  ///< in each list of a song
};

/// A log with any value in any field that depends on nothing but the state of `random` and the options: the
/// same on every machine. Arbitrary bytes in texts, song numbers too; positions in no order; floats of every
/// class, NaNs with any payload; lists without events.
CL::ChangeLog RandomLog(std::mt19937& random, const LogOptions& options = {});

}  // namespace zuna_test
