#pragma once

#include <string>

#include "TL/timeline.h"
#include "cli/base/loss_list.h"

namespace zuna_cli {

/// Adds the entries of `before` that are not in `after`, and those that `after` has beyond them. `where`
/// begins the texts.
void AddTimelineLosses(const TL::Timeline& before, const TL::Timeline& after, const std::string& where,
                       LossList& losses);

}  // namespace zuna_cli
