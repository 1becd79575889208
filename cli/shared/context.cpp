// What the commands share: options, the key, notes and the exit code.
#include "cli/shared/context.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "cmn/file_format.h"
#include "toolkit/document/write.h"

namespace zuna_cli {

namespace {

/// "1.0, 1.1, 1.2 or 2.0 (text)"
std::string VersionsText(cmn::FileKind kind) {
  const auto versions = cmn::SupportedVersions(kind);
  std::string text;
  for (const cmn::FileVersion& version : versions) {
    if (!text.empty()) text += version == versions.back() ? " or " : ", ";
    text += cmn::VersionText(version);
  }
  return text + " (text)";  // The last one is the text form.
}

/// Throws Failure (kUsage) where more than one of `inputs` is "-".
void RequireOneStandardInput(const std::vector<std::string>& inputs) {
  if (std::count(inputs.begin(), inputs.end(), kStandardStream) > 1) {
    throw Failure(ErrorCode::kUsage, "standard input", "is given more than once",
                  "give a file for the others");
  }
}

/// `inputs` and the key files; an empty name is no file.
std::vector<std::string> WithKeyFiles(std::vector<std::string> inputs, const KeyOptions& options) {
  for (const std::string& path : KeyFilePaths(options)) {
    if (!path.empty()) inputs.push_back(path);
  }
  return inputs;
}

void AddKeyOptions(CLI::App& app, KeyOptions& options) {
  const auto append = [&options](const CLI::results_t& files) {
    options.files.insert(options.files.end(), files.begin(), files.end());
    return true;
  };
  app.add_option("--key-file", CLI::callback_t(append),
                 "A file with the key and IV; may be given more than once: each is tried, and an output gets "
                 "the key of its input, or the first one")
      ->type_name("FILE")
      ->take_all()
      ->allow_extra_args(false);
  app.add_flag("--empty-key", options.empty_key, "Let a key be empty; it protects nothing");
}

}  // namespace

void Context::SetWork(CLI::App& command, std::function<void()> run) {
  command.callback([this, run = std::move(run)] { work = run; });
}

void Context::PrintNotes() const {
  if (quiet() > 0) return;
  for (const std::string& note : notes) PrintLine(note);
}

std::vector<std::string> Context::CheckInputs(const std::vector<std::string>& inputs) const {
  std::vector<std::string> all = WithKeyFiles(inputs, key_options);
  RequireOneStandardInput(all);
  return all;
}

Destination Context::CheckPaths(const Output& output, const std::vector<std::string>& inputs) const {
  return Destination(output, CheckInputs(inputs));
}

void Context::Seal(const zuna_toolkit::Document& document, const CipherKey& key, Destination& destination) {
  NoteSealed(key, destination);
  destination.WriteEncrypted(*zuna_toolkit::CipherStreamOf(document, key));
}

void Context::NoteSealed(const CipherKey& key, const Destination& destination) {
  if (LacksKey(key)) Note(destination.name(), kEmptyKeyNote);
}

void RequireFolder(const std::string& path, const std::string& remedy) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return;
  throw Failure(ErrorCode::kNotAFolder, path, "is not a folder", remedy);
}

void AddSharedOptions(CLI::App& app, Context& context) {
  AddKeyOptions(app, context.key_options);
  app.add_flag("-q,--quiet", context.quiet_counts.emplace_back(0),
               "Print errors and losses only; given twice, errors only");
}

void AddInput(CLI::App& command, std::string& input) {
  command.add_option("IN", input, "The input file; - for standard input")->required();
}

CLI::Option* AddOutput(CLI::App& command, Output& output) {
  command.add_option("-o,--output", output.path, "The output file; - for standard output")
      ->required(output.path.empty())
      ->type_name("OUT");
  return command.add_flag("--force", output.force, "Replace the output when it exists");
}

CLI::App* AddFileCommand(CLI::App& app, Context& context, const std::string& name,
                         const std::string& description, Paths& paths) {
  CLI::App* command = app.add_subcommand(name, description);
  AddSharedOptions(*command, context);
  AddInput(*command, paths.input);
  AddOutput(*command, paths.output);
  return command;
}

std::string NotAVersion() {
  return "a version is MAJOR.MINOR, such as " + cmn::VersionText(cmn::kDefaultVersion);
}

std::string CheckTarget(const std::string& text) {
  const auto version = cmn::ParseVersion(text);
  if (!version) return NotAVersion();
  if (cmn::IsSupported(cmn::FileKind::kShow, *version)) return "";
  return text + " is not a version to write: " + VersionsText(cmn::FileKind::kShow) + "; use down for 0.0";
}

void AddTarget(CLI::App& command, cmn::FileVersion& version) {
  version = cmn::kDefaultVersion;
  command
      .add_option_function<std::string>(
          "--to", [&version](const std::string& text) { version = *cmn::ParseVersion(text); },
          "The version of the output: " + VersionsText(cmn::FileKind::kShow) + "; " +
              cmn::VersionText(cmn::kDefaultVersion) + " unless given")
      ->type_name("VERSION")
      ->check(CLI::Validator(CheckTarget, ""));
}

void RequireTarget(const zuna_toolkit::Document& document, const cmn::FileVersion& version) {
  const cmn::FileKind kind = document.type().kind;
  if (cmn::IsSupported(kind, version)) return;
  throw Failure(
      ErrorCode::kNoSuchVersion, document.name(),
      "is a " + std::string(cmn::KindName(kind)) + ", which has no version " + cmn::VersionText(version),
      "give --to " + VersionsText(kind));
}

}  // namespace zuna_cli
