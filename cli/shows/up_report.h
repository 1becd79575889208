#pragma once

#include <string>
#include <vector>

#include "cli/shows/show_file.h"
#include "zuna_midi/show_data.h"

namespace zuna_cli {

/// What the current form of a legacy show has lost: every label that was cut, tracks that share an id, tempos
/// without a meter, and what its file had besides the show. One text each.
std::vector<std::string> UpLosses(const LegacyShow& legacy, const zuna_midi::ShowData& current);

}  // namespace zuna_cli
