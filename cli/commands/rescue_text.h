// The report of a rescue, as lines for people and as JSON.
#pragma once

#include <string>
#include <vector>

#include "toolkit/rescue/rescue.h"

namespace zuna_cli {

/// The lines about what is wrong with the file that was rescued and what is missing, for a terminal: each
/// with the name of the file in front and its line break.
std::vector<std::string> ProblemLines(const zuna_toolkit::Rescued& rescued);

/// "2 of 3 songs are saved, 1 of them in part"
std::string SavedText(const zuna_toolkit::RescueReport& report);

/// All of the report as a line of JSON, with its line break.
std::string RescueJson(const zuna_toolkit::Rescued& rescued);

}  // namespace zuna_cli
