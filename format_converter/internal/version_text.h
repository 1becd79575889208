#pragma once

// A version as it is printed.

#include <string>

#include "cmn/file_version.h"
#include "kit/format.h"

namespace zuna_converter {

/// "MAJOR.MINOR" in decimal.
inline std::string version_text(const cmn::FileVersion& version) {
  return kit::format("%u.%u", version.major, version.minor);
}

}  // namespace zuna_converter
