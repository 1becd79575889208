#pragma once

// The text form of a log of any current version (docs/format-2.md). Not part of the contract with the
// converter: a product that replaces platform/ for the converter alone need not supply it.

#include <iosfwd>

#include "CL/change_log.h"
#include "cmn/file_version.h"
#include "kit/api.h"

namespace CL {

/// Writes a log as text that states the version `stated`; with 2.0 this is a file of that version. Throws
/// cmn::UnsupportedVersionError for a version that logs do not have, std::logic_error for a song log without
/// a list, kit::IoError.
ZUNA_API void WriteTextForm(std::ostream& os, const ChangeLog& log, const cmn::FileVersion& stated);

/// Reads a log from text that states any current version, which `stated` and the log's file_version become.
/// Throws cmn::DataError, cmn::UnsupportedVersionError.
ZUNA_API ChangeLog ReadTextForm(std::istream& is, cmn::FileVersion& stated);

}  // namespace CL
