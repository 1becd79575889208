#include "cli/commands/context.h"

#include <algorithm>
#include <iterator>

#include "cli/base/file_io.h"
#include "cli/base/key_file.h"
#include "cli/base/messages.h"
#include "cli/base/version_text.h"

namespace zuna_cli {

namespace {

/// The current versions of shows.
constexpr cmn::FileVersion kVersions[] = {{1, 0}, {1, 1}, {1, 2}, {2, 0}};

}  // namespace

CipherKey Context::Key() const { return LoadKey(KeyFilePath(key_file)); }

void Context::Note(const std::string& name, const std::string& text) const {
  if (!quiet) PrintNote(name, text);
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

void AddInput(CLI::App& command, std::string& input) {
  command.add_option("IN", input, "The input file; - for standard input")->required();
}

void AddOutput(CLI::App& command, Output& output) {
  command.add_option("-o,--output", output.path, "The output file; - for standard output")
      ->required()
      ->type_name("OUT");
  command.add_flag("--force", output.force, "Replace the output when it exists");
}

void AddTarget(CLI::App& command, cmn::FileVersion& version) {
  const auto check = [](const std::string& text) -> std::string {
    const auto wanted = ParseVersion(text);
    if (!wanted) return "a version is MAJOR.MINOR, such as " + std::string(kDefaultVersion);
    const bool writable =
        std::find(std::begin(kVersions), std::end(kVersions), *wanted) != std::end(kVersions);
    return writable ? "" : text + " is not a version to write: 1.0, 1.1, 1.2 or 2.0 (text); use down for 0.0";
  };
  version = *ParseVersion(kDefaultVersion);
  command
      .add_option_function<std::string>(
          "--to", [&version](const std::string& text) { version = *ParseVersion(text); },
          "The version of the output: 1.0, 1.1, 1.2 or 2.0 (text); " + std::string(kDefaultVersion) +
              " unless given")
      ->type_name("VERSION")
      ->check(CLI::Validator(check, ""));
}

}  // namespace zuna_cli
