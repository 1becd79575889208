// Whether an output holds what it should.
#pragma once

#include "toolkit/document/document.h"

namespace zuna_cli {

/// Whether two documents of one kind and version hold the same. Throws zuna_toolkit::Error.
bool HoldTheSame(const zuna_toolkit::Document& a, const zuna_toolkit::Document& b);

}  // namespace zuna_cli
