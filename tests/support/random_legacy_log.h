// Random legacy logs.

#pragma once

#include <random>

#include "format_converter/version0/containers/change_log.h"

namespace zuna_test {

/// A random legacy log with at least one song log. The current model holds everything that a legacy log does,
/// so it comes back from there byte for byte.
version0::ChangeLogV0 RandomLegacyLog(std::mt19937& random);

}  // namespace zuna_test
