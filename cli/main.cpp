// The tool zuna-convert: options, commands, exit code.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <string_view>

#include "cli/help/command_tree.h"
#include "cli/help/complaint.h"
#include "cli/help/help_text.h"
#include "cli/shared/context.h"
#include "cli/terminal/signals.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

namespace {

void AddMidiCommands(CLI::App& app, Context& context) {
  CLI::App* midi = app.add_subcommand("midi", "Standard MIDI Files");
  midi->require_subcommand(1);
  AddMidiImportCommand(*midi, context);
  AddMidiExportCommand(*midi, context);
}

struct Command {
  std::string_view name;
  void (*add)(CLI::App& app, Context& context);
  bool tells_of_others = false;  ///< it prints something about every command
};

/// In the order of the help.
constexpr std::array kCommands{
    Command{"up", AddUpCommand},
    Command{"down", AddDownCommand},
    Command{"convert", AddConvertCommand},
    Command{"copy-fermatas", AddCopyFermatasCommand},
    Command{"check", AddCheckCommand},
    Command{"diff", AddDiffCommand},
    Command{"info", AddInfoCommand},
    Command{"dump", AddDumpCommand},
    Command{"build", AddBuildCommand},
    Command{"edit", AddEditCommand},
    Command{"print", AddPrintCommand},
    Command{"view", AddViewCommand},
    Command{"list", AddListCommand},
    Command{"encrypt", AddEncryptCommand},
    Command{"decrypt", AddDecryptCommand},
    Command{"rescue", AddRescueCommand},
    Command{"midi", AddMidiCommands},
    Command{"explain", AddExplainCommand},
    Command{"completion", AddCompletionCommand, true},
    Command{"help", AddHelpCommand, true},
};

/// Adds the command that is the first word, or all commands where that is not enough: all of them take a
/// fifth of the time in which the tool starts.
void AddCommands(CLI::App& app, Context& context, std::string_view first_word) {
  AddSharedOptions(app, context);
  app.fallthrough();
  app.require_subcommand(1);
  app.set_version_flag("--version", "zuna-convert " ZUNA_VERSION, "Print the version and exit");
  const auto is_named = [&](const Command& command) { return command.name == first_word; };
  const auto named = std::find_if(kCommands.begin(), kCommands.end(), is_named);
  const bool is_enough = named != kCommands.end() && !named->tells_of_others;
  for (const Command& command : kCommands) {
    if (!is_enough || is_named(command)) command.add(app, context);
  }
  TakeArgumentsAsTheyAre(app);
  RefuseEmptyValues(app);
}

/// Shows help or the version, or tells what is wrong with the command line, whose last word is given.
ExitCode ReportParse(const CLI::App& app, const CLI::ParseError& error, const std::string& last_word) {
  if (dynamic_cast<const CLI::CallForHelp*>(&error) != nullptr) {
    WriteStandardOutput(HelpText(NamedCommand(app)));
    return ExitCode::kDone;
  }
  if (dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr) {
    WriteStandardOutput(std::string(error.what()) + '\n');
    return ExitCode::kDone;
  }
  PrintError(Complaint(app, error, last_word));
  return ExitCode::kUsage;
}

ExitCode Run(int argc, char** argv) {
  Context context;
  CLI::App app("Converts show and log files between format 0.0, the current versions and MIDI.",
               "zuna-convert");
  try {
    AddCommands(app, context, argc > 1 ? argv[1] : "");
    try {
      app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
      return ReportParse(app, error, argv[argc - 1]);
    }
    context.work();
    context.PrintNotes();
    return context.code;
  } catch (...) {
    const Failure failure = CurrentFailure();
    PrintError(failure);
    return failure.exit_code();
  }
}

}  // namespace

}  // namespace zuna_cli

int main(int argc, char** argv) {
  if (!zuna_cli::OccupyStandardDescriptors()) {
    zuna_cli::PrintLine("zuna-convert: /dev/null: cannot be opened; close other files or programs\n");
    return static_cast<int>(zuna_cli::ExitCode::kIo);
  }
  zuna_cli::HandleSignals();
  try {
    return static_cast<int>(zuna_cli::Run(argc, argv));
  } catch (...) {  // There is no memory for a message of its own.
    zuna_cli::PrintLine("zuna-convert: out of memory; close other programs or take a smaller file\n");
    return static_cast<int>(zuna_cli::ExitCode::kInternal);
  }
}
