#pragma once

#include <iosfwd>
#include <string_view>

#include "zuna_midi/show_data.h"

namespace zuna_core {

/// Reads a show from a text document of version 2.0 (docs/format-2.md). `prefix` is what has been read from
/// the stream already. Throws cmn::DataError, cmn::UnsupportedVersionError.
zuna_midi::ShowData ReadTextShow(std::istream& is, std::string_view prefix);

}  // namespace zuna_core
