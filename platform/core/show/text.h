#pragma once

// The text form of a show (docs/format-2.md).

#include <iosfwd>
#include <string_view>

#include "zuna_midi/show_data.h"

namespace zuna_core {

void WriteTextShow(std::ostream& os, const zuna_midi::ShowData& show);

/// `prefix` is what has been read from the stream already. Throws cmn::DataError,
/// cmn::UnsupportedVersionError.
zuna_midi::ShowData ReadTextShow(std::istream& is, std::string_view prefix);

}  // namespace zuna_core
