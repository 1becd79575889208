// The tool zuna-convert: options, commands, exit code.
#include <CLI/CLI.hpp>
#include <new>
#include <sstream>

#include "cli/commands/context.h"
#include "cli/terminal/signals.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

namespace {

constexpr const char* kFooter =
    "The key and IV of encrypted files come from --key-file, or the file that ZUNA_KEY_FILE names, with the\n"
    "lines \"key = HEX\" and \"iv = HEX\"; without one both are empty, which protects nothing. Only the "
    "owner\n"
    "should be able to read a key file (chmod 600).\n"
    "Exit codes: 0 done, 1 no such song, 2 usage, 3 refused by policy, 4 bad or unsupported input,\n"
    "5 wrong key, 6 input or output failed, 7 part of a batch failed, 8 nothing matched, 70 internal error,\n"
    "130 interrupted, 141 output pipe closed.";

void AddCommands(CLI::App& app, Context& context) {
  AddSharedOptions(app, context);
  app.fallthrough();
  app.require_subcommand(1);
  app.set_version_flag("--version", "zuna-convert " ZUNA_VERSION, "Print the version and exit");
  app.footer(kFooter);
  AddUpCommand(app, context);
  AddDownCommand(app, context);
  AddConvertCommand(app, context);
  AddCopyFermatasCommand(app, context);
  AddInfoCommand(app, context);
  AddPrintCommand(app, context);
  AddListCommand(app, context);
  AddEncryptCommand(app, context);
  AddDecryptCommand(app, context);
  CLI::App* midi = app.add_subcommand("midi", "Standard MIDI Files");
  midi->require_subcommand(1);
  AddMidiImportCommand(*midi, context);
  AddMidiExportCommand(*midi, context);
}

bool g_lacked_memory = false;

void NoteLackOfMemory() {
  g_lacked_memory = true;
  throw std::bad_alloc();
}

/// The text of help or of the version. The parser's own streams drop what they have no memory for.
std::string HelpText(const CLI::App& app, const CLI::ParseError& error) {
  std::ostringstream text;
  std::set_new_handler(NoteLackOfMemory);
  app.exit(error, text, text);
  if (g_lacked_memory) throw std::bad_alloc();
  return text.str();
}

/// What is wrong with the command line. An unknown word is the reason where the parser
/// misses another one.
std::string Complaint(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  if (dynamic_cast<const CLI::RequiredError*>(&error) == nullptr || unknown.empty()) return error.what();
  return '"' + unknown.front() + "\" is not known here";
}

/// Shows help, or tells what is wrong with the command line.
ExitCode ReportParse(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    WriteStandardOutput(HelpText(app, error));
    return ExitCode::kDone;
  }
  PrintError(Failure(ExitCode::kUsage, "command line",
                     Complaint(app, error) + "; see zuna-convert --help or zuna-convert COMMAND --help"));
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
      return ReportParse(app, error);
    }
    context.work();
    context.PrintNotes();
    return context.code;
  } catch (...) {
    const Failure failure = CurrentFailure();
    PrintError(failure);
    return failure.code();
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
