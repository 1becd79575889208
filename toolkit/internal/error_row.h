// A row of the table of all error codes.
#pragma once

#include <array>

#include "toolkit/error_code.h"

namespace zuna_toolkit {

/// All that there is to tell about a code.
struct ErrorRow {
  ErrorCode code;
  ErrorKind kind;
  Explanation explanation;
};

}  // namespace zuna_toolkit
