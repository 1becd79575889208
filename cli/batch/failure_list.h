// The failures that close a command on many inputs.
#pragma once

#include <string>
#include <vector>

#include "cli/terminal/failure.h"

namespace zuna_cli {

/// What an input failed with.
struct FailedInput {
  std::string input;  ///< its path; empty where the failure itself names it
  Failure failure;
};

/// The failures to print, in the order of the inputs: each cause once. One file that cannot be read,
/// itself or as a companion, is told once, with the inputs that need it; more than three files with the same
/// problem are told by one line, with the names of the first ones.
std::vector<Failure> FailuresToTell(const std::vector<FailedInput>& failed);

}  // namespace zuna_cli
