// Messages on standard error.
#pragma once

#include <string>

#include "cli/terminal/failure.h"

namespace zuna_cli {

/// Writes "zuna-convert: " and the message to standard error, in colour on a terminal unless the environment
/// has NO_COLOR.
void PrintError(const Failure& failure);

/// Writes "zuna-convert: NAME: " and the text to standard error.
void PrintNote(const std::string& name, const std::string& text);

}  // namespace zuna_cli
