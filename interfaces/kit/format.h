// Texts from printf formats.

#pragma once

#include <string>

#include "kit/api.h"

namespace kit {

/// Formats like printf(3) into a string of any length.
/// Throws std::invalid_argument where the C library refuses the format.
[[gnu::format(printf, 1, 2)]] ZUNA_API std::string format(const char* fmt, ...);

}  // namespace kit
