// zuna-convert completion
#include <algorithm>
#include <memory>

#include "cli/completion/scripts.h"
#include "cli/shared/context.h"

namespace zuna_cli {

namespace {

/// Throws Failure (kUsage) for a shell that is not known.
const Shell& ShellOf(const std::string& name) {
  const auto* found =
      std::find_if(kShells.begin(), kShells.end(), [&](const Shell& shell) { return shell.name == name; });
  if (found != kShells.end()) return *found;
  throw Failure(ErrorCode::kUsage, "command line", '"' + name + "\" is no shell that is known here",
                "give bash, zsh or fish");
}

}  // namespace

void AddCompletionCommand(CLI::App& app, Context& context) {
  CLI::App* command =
      app.add_subcommand("completion", "Print a script that completes command lines in a shell");
  AddSharedOptions(*command, context);
  const auto name = std::make_shared<std::string>();
  command->add_option("SHELL", *name, "The shell: bash, zsh or fish")->required();
  context.SetWork(*command,
                  [name, &app] { WriteStandardOutput(ShellOf(*name).script(CompletionTable(app))); });
}

}  // namespace zuna_cli
