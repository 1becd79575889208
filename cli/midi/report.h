#pragma once

#include <string>
#include <vector>

#include "cli/base/tally.h"

namespace zuna_cli::midi {

/// What a conversion from or to MIDI did not keep, and what else its user should know.
struct Report {
  Tally not_kept;
  std::vector<std::string> remarks;
};

}  // namespace zuna_cli::midi
