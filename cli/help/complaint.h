// What is wrong with a command line.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "cli/terminal/failure.h"

namespace zuna_cli {

/// What is wrong with the command line that made the parser `root` throw `error`, with what may have been
/// meant and where to read more. `last_word` is the last one of the command line.
Failure Complaint(const CLI::App& root, const CLI::ParseError& error, const std::string& last_word);

/// `"conver" is not known here`, with a suggestion, for a word that stands where a command below `parent`
/// should, and where to read more.
Failure UnknownCommand(const CLI::App& parent, const std::string& word);

}  // namespace zuna_cli
