// The commands of the tool and their options, as the parser has them.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace zuna_cli {

/// The commands right below `command`.
std::vector<const CLI::App*> CommandsOf(const CLI::App& command);

/// The command that the command line names: `root`, or one below it.
const CLI::App& NamedCommand(const CLI::App& root);

/// All words of a command: "zuna-convert midi import".
std::string FullName(const CLI::App& command);

/// The words of a command without the name of the tool: "midi import"; nothing for the tool itself.
std::string NameInTool(const CLI::App& command);

/// Whether an option has no value.
bool IsFlag(const CLI::Option& option);

/// Whether an argument may be given any number of times.
bool IsRepeated(const CLI::Option& argument);

/// The options that have a name, and the arguments that stand alone.
std::vector<const CLI::Option*> OptionsOf(const CLI::App& command);
std::vector<const CLI::Option*> ArgumentsOf(const CLI::App& command);

/// The options of a command and those of the commands above it that it does not have itself. All of them may
/// stand in its command line.
std::vector<const CLI::Option*> AllOptionsOf(const CLI::App& command);

/// How an option may be written: "-o" and "--output".
std::vector<std::string> Spellings(const CLI::Option& option);

/// Makes arguments of the form "[a]" mean themselves in all commands below `root`. The parser takes them for
/// lists where an argument may be repeated without end, so the end is put out of reach instead.
void TakeArgumentsAsTheyAre(CLI::App& root);

/// Makes all commands below `root` refuse an empty value of an option or an argument. Names of shows and
/// numbers of songs may be empty, and what an empty --key-file means depends on --empty-key.
void RefuseEmptyValues(CLI::App& root);

}  // namespace zuna_cli
