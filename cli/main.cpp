// The tool zuna-convert: options, commands, exit code.
#include <CLI/CLI.hpp>

#include "cli/help/command_tree.h"
#include "cli/help/complaint.h"
#include "cli/help/help_text.h"
#include "cli/shared/context.h"
#include "cli/terminal/signals.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

namespace {

void AddCommands(CLI::App& app, Context& context) {
  AddSharedOptions(app, context);
  app.fallthrough();
  app.require_subcommand(1);
  app.set_version_flag("--version", "zuna-convert " ZUNA_VERSION, "Print the version and exit");
  AddUpCommand(app, context);
  AddDownCommand(app, context);
  AddConvertCommand(app, context);
  AddCopyFermatasCommand(app, context);
  AddCheckCommand(app, context);
  AddDiffCommand(app, context);
  AddInfoCommand(app, context);
  AddDumpCommand(app, context);
  AddBuildCommand(app, context);
  AddEditCommand(app, context);
  AddPrintCommand(app, context);
  AddListCommand(app, context);
  AddEncryptCommand(app, context);
  AddDecryptCommand(app, context);
  AddRescueCommand(app, context);
  CLI::App* midi = app.add_subcommand("midi", "Standard MIDI Files");
  midi->require_subcommand(1);
  AddMidiImportCommand(*midi, context);
  AddMidiExportCommand(*midi, context);
  AddExplainCommand(app, context);
  AddCompletionCommand(app, context);
  AddHelpCommand(app, context);
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
    AddCommands(app, context);
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
