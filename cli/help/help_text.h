// The help of a command.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace zuna_cli {

/// What a command does, how it is called, its arguments, options, commands and examples, in lines of at most
/// 80 columns. That of the tool itself tells about keys and exit codes as well.
std::string HelpText(const CLI::App& command);

/// An option with its value as messages name it: "--output OUT".
std::string OptionText(const CLI::Option& option);

}  // namespace zuna_cli
