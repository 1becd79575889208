// Scripts that let shells complete the command line of the tool.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "cli/completion/table.h"

namespace zuna_cli {

/// Each gives the script for a shell, which is sourced there or installed in the shell's folder for it.
std::string BashScript(const CompletionCommand& tool);
std::string ZshScript(const CompletionCommand& tool);
std::string FishScript(const CompletionCommand& tool);

/// A shell by its name.
struct Shell {
  std::string_view name;
  std::string (*script)(const CompletionCommand& tool);
};

constexpr auto kShells =
    std::to_array<Shell>({{"bash", BashScript}, {"zsh", ZshScript}, {"fish", FishScript}});

}  // namespace zuna_cli
