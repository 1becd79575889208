// Random current logs.

#pragma once

#include <random>

#include "CL/change_log.h"

namespace zuna_test {

/// What a random log looks like.
struct LogOptions {
  unsigned max_songs = 4;
  unsigned max_events = 8;  ///< in each list of a song
  /// Any value in any field: arbitrary bytes in texts, song numbers too; positions in no order; floats of
  /// every class, NaNs with any payload. Otherwise the log is one that a user could have made: UTF-8 texts,
  /// edits within their song that end after they begin, positive counts and factors.
  bool wild = true;
};

/// A log that depends on nothing but the state of `random` and the options: the same on every machine. Lists
/// may be empty.
CL::ChangeLog RandomLog(std::mt19937& random, const LogOptions& options = {});

}  // namespace zuna_test
