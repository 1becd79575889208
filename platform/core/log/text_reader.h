#pragma once

#include <iosfwd>
#include <string_view>

#include "CL/change_log.h"

namespace zuna_core {

/// Reads a log from a text document of version 2.0 (docs/format-2.md). `prefix` is what has been read from
/// the stream already. Throws cmn::DataError, cmn::UnsupportedVersionError.
CL::ChangeLog ReadTextLog(std::istream& is, std::string_view prefix);

}  // namespace zuna_core
