// What may stand in a command line of the tool, as data.
#include "cli/completion/table.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "cli/completion/scripts.h"
#include "cli/help/codes.h"
#include "cli/help/command_tree.h"
#include "cmn/file_format.h"
#include "cmn/file_version.h"

namespace zuna_cli {

namespace {

using Kind = CompletionValues::Kind;

std::vector<std::string> VersionWords() {
  std::vector<std::string> words;
  for (const cmn::FileVersion& version : cmn::SupportedVersions(cmn::FileKind::kShow)) {
    words.push_back(cmn::VersionText(version));
  }
  return words;
}

std::vector<std::string> ShellWords() {
  std::vector<std::string> words(kShells.size());
  std::transform(kShells.begin(), kShells.end(), words.begin(),
                 [](const Shell& shell) { return shell.name; });
  return words;
}

std::vector<std::string> CommandWords(const CLI::App& root) {
  std::vector<std::string> words;
  for (const CLI::App* command : CommandsOf(root)) words.push_back(command->get_name());
  return words;
}

/// What a value may be that the help calls `name`.
CompletionValues ValuesOf(const std::string& name, const CLI::App& root) {
  static const std::set<std::string_view> kFiles = {
      "AFTER", "BEFORE", "DESTINATION", "EARLIER", "FILE", "IN", "LOG", "MID", "OUT", "SHOW", "SOURCE"};
  if (kFiles.contains(name)) return {Kind::kFiles};
  if (name == "DIR") return {Kind::kFolders};
  if (name == "VERSION") return {Kind::kWords, VersionWords()};
  if (name == "loss|any-loss") return {Kind::kWords, {"loss", "any-loss"}};
  if (name == "SHELL") return {Kind::kWords, ShellWords()};
  if (name == "CODE") return {Kind::kWords, AllCodes()};
  if (name == "COMMAND") return {Kind::kWords, CommandWords(root)};
  return {};
}

/// What a description says before its first semicolon: the rest is for the help.
std::string Beginning(const std::string& description) { return description.substr(0, description.find(';')); }

CompletionCommand Describe(const CLI::App& command, const CLI::App& root) {
  CompletionCommand described;
  described.name = NameInTool(command);
  described.last_word = command.get_name();
  described.description = Beginning(command.get_description());
  for (const CLI::Option* option : AllOptionsOf(command)) {
    const std::string value = IsFlag(*option) ? "" : option->get_type_name();
    described.options.push_back(
        {Spellings(*option), value, ValuesOf(value, root), Beginning(option->get_description())});
  }
  for (const CLI::Option* argument : ArgumentsOf(command)) {
    described.argument = ValuesOf(argument->get_name(), root);
    described.has_argument = true;
  }
  for (const CLI::App* below : CommandsOf(command)) described.commands.push_back(Describe(*below, root));
  return described;
}

}  // namespace

CompletionCommand CompletionTable(const CLI::App& root) { return Describe(root, root); }

std::vector<const CompletionCommand*> AllCommands(const CompletionCommand& command) {
  std::vector<const CompletionCommand*> all = {&command};
  for (const CompletionCommand& below : command.commands) {
    for (const CompletionCommand* found : AllCommands(below)) all.push_back(found);
  }
  return all;
}

std::vector<std::string> OptionsWithValue(const CompletionCommand& tool) {
  std::set<std::string> spellings;
  for (const CompletionCommand* command : AllCommands(tool)) {
    for (const CompletionOption& option : command->options) {
      if (!option.value.empty()) spellings.insert(option.spellings.begin(), option.spellings.end());
    }
  }
  return {spellings.begin(), spellings.end()};
}

}  // namespace zuna_cli
