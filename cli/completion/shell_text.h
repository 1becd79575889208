// Pieces of the completion scripts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/completion/table.h"

namespace zuna_cli {

/// `text` in single quotes, as bash and zsh read it.
std::string Quoted(std::string_view text);

/// Puts `separator` between the words.
std::string Joined(const std::vector<std::string>& words, std::string_view separator);

/// `text` with every `name` in it replaced by `value`.
std::string Replaced(std::string text, std::string_view name, std::string_view value);

/// The values as bash and zsh get them here: 'files', 'folders', 'words a b c' or ''.
std::string ValuesText(const CompletionValues& values);

/// A pattern of bash and zsh that matches "COMMAND WORD" for every command WORD below COMMAND.
std::string CommandPattern(const CompletionCommand& tool);

/// A branch of a case over "COMMAND:OPTION" for every option of `command` that has a value.
std::string OptionBranches(const CompletionCommand& command);

}  // namespace zuna_cli
