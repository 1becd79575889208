// The commands of the tool and their options, as the parser has them.
#include "cli/help/command_tree.h"

#include <algorithm>

namespace zuna_cli {

namespace {

constexpr int kNoEnd = CLI::detail::expected_max_vector_size;

bool MayBeEmpty(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  return IsFlag(option) || type == "NAME" || type == "NUMBER" || option.check_lname("key-file");
}

std::string CheckNotEmpty(const std::string& text) { return text.empty() ? "its value is empty" : ""; }

}  // namespace

std::vector<const CLI::App*> CommandsOf(const CLI::App& command) {
  return command.get_subcommands([](const CLI::App*) { return true; });
}

const CLI::App& NamedCommand(const CLI::App& root) {
  const CLI::App* command = &root;
  while (!command->get_subcommands().empty()) command = command->get_subcommands().front();
  return *command;
}

std::string FullName(const CLI::App& command) {
  const CLI::App* parent = command.get_parent();
  return (parent == nullptr ? "" : FullName(*parent) + ' ') + command.get_name();
}

std::string NameInTool(const CLI::App& command) {
  const std::string name = FullName(command);
  const std::size_t blank = name.find(' ');
  return blank == std::string::npos ? "" : name.substr(blank + 1);
}

bool IsFlag(const CLI::Option& option) { return option.get_items_expected_max() == 0; }

bool IsRepeated(const CLI::Option& argument) { return argument.get_items_expected_max() >= kNoEnd; }

std::vector<const CLI::Option*> OptionsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::vector<const CLI::Option*> ArgumentsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<const CLI::Option*> AllOptionsOf(const CLI::App& command) {
  std::vector<const CLI::Option*> options = OptionsOf(command);
  if (command.get_parent() == nullptr) return options;
  for (const CLI::Option* option : AllOptionsOf(*command.get_parent())) {
    const auto is_same = [&](const CLI::Option* own) { return own->get_name() == option->get_name(); };
    if (std::none_of(options.begin(), options.end(), is_same)) options.push_back(option);
  }
  return options;
}

std::vector<std::string> Spellings(const CLI::Option& option) {
  std::vector<std::string> spellings;
  for (const std::string& name : option.get_snames()) spellings.push_back('-' + name);
  for (const std::string& name : option.get_lnames()) spellings.push_back("--" + name);
  return spellings;
}

void TakeArgumentsAsTheyAre(CLI::App& root) {
  for (CLI::App* command : root.get_subcommands([](CLI::App*) { return true; })) {
    for (CLI::Option* option : command->get_options()) {
      if (!option->get_positional() || !option->get_allow_extra_args()) continue;
      option->expected(kNoEnd, kNoEnd)->take_all()->allow_extra_args(false);
    }
    TakeArgumentsAsTheyAre(*command);
  }
}

void RefuseEmptyValues(CLI::App& root) {
  for (CLI::App* command : root.get_subcommands([](CLI::App*) { return true; })) {
    for (CLI::Option* option : command->get_options()) {
      if (!MayBeEmpty(*option)) option->check(CLI::Validator(CheckNotEmpty, ""));
    }
    RefuseEmptyValues(*command);
  }
}

}  // namespace zuna_cli
