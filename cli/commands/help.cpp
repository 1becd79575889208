// zuna-convert help
#include <algorithm>
#include <memory>

#include "cli/help/command_tree.h"
#include "cli/help/complaint.h"
#include "cli/help/help_text.h"
#include "cli/shared/context.h"

namespace zuna_cli {

namespace {

/// The command of these words. Throws Failure (kUsage).
const CLI::App& CommandOf(const CLI::App& root, const std::vector<std::string>& words) {
  const CLI::App* command = &root;
  for (const std::string& word : words) {
    const auto commands = CommandsOf(*command);
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const CLI::App* below) { return below->get_name() == word; });
    if (found == commands.end()) {
      throw UnknownCommand(*command, word);
    }
    command = *found;
  }
  return *command;
}

}  // namespace

void AddHelpCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("help", "Print the help of a command, or of the tool");
  AddSharedOptions(*command, context);
  const auto words = std::make_shared<std::vector<std::string>>();
  command->add_option("COMMAND", *words, "The command, such as convert or midi import");
  context.SetWork(*command, [words, &app] { WriteStandardOutput(HelpText(CommandOf(app, *words))); });
}

}  // namespace zuna_cli
