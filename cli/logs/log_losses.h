#pragma once

#include <string>
#include <vector>

#include "CL/change_log.h"
#include "cli/base/loss_list.h"
#include "cli/logs/log_file.h"
#include "format_converter/version0/containers/show_data.h"

namespace zuna_cli {

/// What `log` loses in format 0.0: found by comparing it with `after`, its form after going there and back.
std::vector<Loss> DownLosses(const CL::ChangeLog& log, const CL::ChangeLog& after);

/// Gives every song of `log` the division that it has in `show`. Tells what one has and the other lacks, a
/// text each. Throws Failure (kBadInput) where they have no song in common. `show_name` is the show's file.
std::vector<std::string> TakeDivisions(const version0::ShowData& show, const std::string& show_name,
                                       CL::ChangeLog& log);

}  // namespace zuna_cli
