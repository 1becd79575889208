#pragma once

#include <iosfwd>

#include "zuna_midi/show_data.h"

namespace zuna_core {

/// Writes a show as a text document of version 2.0 (docs/format-2.md).
void WriteTextShow(std::ostream& os, const zuna_midi::ShowData& show);

}  // namespace zuna_core
