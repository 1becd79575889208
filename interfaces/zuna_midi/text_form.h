#pragma once

// The text form of a show of any current version (docs/format-2.md). Not part of the contract with the
// converter: a product that replaces platform/ for the converter alone need not supply it.

#include <iosfwd>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_midi/show_data.h"

namespace zuna_midi {

/// Writes a show as text that states the version `stated`; with 2.0 this is a file of that version. Throws
/// cmn::UnsupportedVersionError for a version that shows do not have, std::logic_error for a song without
/// timeline or voices, kit::IoError.
ZUNA_API void WriteTextForm(std::ostream& os, const ShowData& show, const cmn::FileVersion& stated);

/// Reads a show from text that states any current version, which `stated` becomes. Throws cmn::DataError,
/// cmn::UnsupportedVersionError.
ZUNA_API ShowData ReadTextForm(std::istream& is, cmn::FileVersion& stated);

}  // namespace zuna_midi
