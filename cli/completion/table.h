// What may stand in a command line of the tool, as data.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace zuna_cli {

/// What an argument or the value of an option may be.
struct CompletionValues {
  enum class Kind { kAnything, kFiles, kFolders, kWords };
  Kind kind = Kind::kAnything;
  std::vector<std::string> words = {};  ///< all that it may be, for kWords
};

/// An option with all its spellings.
struct CompletionOption {
  std::vector<std::string> spellings;
  std::string value;  ///< what the help calls its value; nothing for a flag
  CompletionValues values;
  std::string description;
};

/// A command with all that may follow it.
struct CompletionCommand {
  std::string name;  ///< "midi import"; nothing for the tool itself
  std::string last_word;
  std::string description;
  std::vector<CompletionOption> options;
  CompletionValues argument;
  bool has_argument = false;
  std::vector<CompletionCommand> commands;  ///< those right below it
};

/// The whole tool, as its parser `root` has it.
CompletionCommand CompletionTable(const CLI::App& root);

/// The command and all below it, each before those below it.
std::vector<const CompletionCommand*> AllCommands(const CompletionCommand& command);

/// The spellings of all options that have a value.
std::vector<std::string> OptionsWithValue(const CompletionCommand& tool);

}  // namespace zuna_cli
