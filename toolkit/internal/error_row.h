// A row of the table of all error codes.
#pragma once

#include <array>

#include "toolkit/error_code.h"

namespace zuna_toolkit {

/// The last field of a row of an error that may be one of a damaged file.
inline constexpr bool kMayRescueHelp = true;

/// All that there is to tell about a code.
struct ErrorRow {
  ErrorCode code;
  ErrorKind kind;
  Explanation explanation;
  bool may_rescue_help = false;
};

}  // namespace zuna_toolkit
