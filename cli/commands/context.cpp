#include "cli/commands/context.h"

#include <algorithm>
#include <filesystem>

#include "cli/base/file_io.h"
#include "cli/base/key_file.h"
#include "cli/base/messages.h"
#include "cli/base/version_text.h"

namespace zuna_cli {

namespace {

/// What is wrong with `text` as the version of an output; empty for nothing.
std::string CheckTarget(const std::string& text) {
  const auto version = ParseVersion(text);
  if (!version) return std::string("a version is MAJOR.MINOR, such as ") + kDefaultVersion;
  const auto& writable = kWritableVersions;
  if (std::find(writable.begin(), writable.end(), *version) != writable.end()) return "";
  return text + " is not a version to write: " + WritableVersionsText() + "; use down for 0.0";
}

}  // namespace

CipherKey Context::Key() const { return LoadKey(KeyFilePath(key_file)); }

void Context::PrintNotes() const {
  if (quiet) return;
  for (const auto& [name, text] : notes) PrintNote(name, text);
}

void Context::CheckPaths(const Output& output, std::vector<std::string> inputs) const {
  const std::string key_path = KeyFilePath(key_file);
  if (!key_path.empty()) inputs.push_back(key_path);
  RequireUsableInputs(inputs);
  output.Check(inputs);
}

void RequireUsableInputs(const std::vector<std::string>& inputs) {
  if (std::find(inputs.begin(), inputs.end(), "") != inputs.end()) {
    throw Failure(ExitCode::kUsage, "command line", "the path of an input is empty; give a file");
  }
  if (std::count(inputs.begin(), inputs.end(), kStandardStream) > 1) {
    throw Failure(ExitCode::kUsage, "standard input", "is given more than once; give a file for the others");
  }
}

void RequireFolder(const std::string& path, const std::string& remedy) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return;
  throw Failure(ExitCode::kIo, path, "is not a folder; " + remedy);
}

void AddSharedOptions(CLI::App& app, Context& context) {
  app.add_option("--key-file", context.key_file, "The file with the key and IV")->type_name("FILE");
  app.add_flag("--quiet", context.quiet, "Tell nothing but errors");
}

void AddInput(CLI::App& command, std::string& input) {
  command.add_option("IN", input, "The input file; - for standard input")->required();
}

void AddOutput(CLI::App& command, Output& output) {
  command.add_option("-o,--output", output.path, "The output file; - for standard output")
      ->required()
      ->type_name("OUT");
  command.add_flag("--force", output.force, "Replace the output when it exists");
}

CLI::App* AddFileCommand(CLI::App& app, Context& context, const std::string& name,
                         const std::string& description, Paths& paths) {
  CLI::App* command = app.add_subcommand(name, description);
  AddSharedOptions(*command, context);
  AddInput(*command, paths.input);
  AddOutput(*command, paths.output);
  return command;
}

void AddTarget(CLI::App& command, cmn::FileVersion& version) {
  version = *ParseVersion(kDefaultVersion);
  command
      .add_option_function<std::string>(
          "--to", [&version](const std::string& text) { version = *ParseVersion(text); },
          "The version of the output: " + WritableVersionsText() + "; " + kDefaultVersion + " unless given")
      ->type_name("VERSION")
      ->check(CLI::Validator(CheckTarget, ""));
}

void RequireLogVersion(const cmn::FileVersion& version) {
  constexpr cmn::FileVersion kFirst = kWritableVersions[1];
  if (version >= kFirst) return;
  throw Failure(
      ExitCode::kUsage, "command line",
      "--to: logs have no version " + VersionText(version) + "; give " + WritableVersionsText(kFirst));
}

}  // namespace zuna_cli
