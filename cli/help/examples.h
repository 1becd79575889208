// Command lines that the help shows.
#pragma once

#include <string_view>
#include <vector>

namespace zuna_cli {

/// One to three command lines for the command of this name, such as "midi import"; "" is the tool itself.
std::vector<std::string_view> ExamplesOf(std::string_view command);

}  // namespace zuna_cli
