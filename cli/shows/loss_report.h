#pragma once

#include <vector>

#include "cli/base/loss_list.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_midi/show_data.h"

namespace zuna_cli {

/// What `show` loses in `legacy`, its form in format 0.0: found by comparing it with what comes back up from
/// there. Throws what that conversion throws.
std::vector<Loss> DownLosses(const zuna_midi::ShowData& show, const version0::ShowData& legacy);

}  // namespace zuna_cli
