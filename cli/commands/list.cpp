// zuna-convert list
#include <memory>
#include <optional>

#include "cli/batch/report.h"
#include "cli/batch/runner.h"
#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/shared/json_text.h"
#include "cli/terminal/text.h"
#include "cmn/file_format.h"
#include "kit/file.h"
#include "toolkit/document/open.h"
#include "toolkit/document/text_form.h"

namespace zuna_cli {

namespace {

struct ListOptions {
  InputOptions inputs;
  cmn::FileVersion from;
  std::optional<cmn::FileVersion> below;
  bool json = false;

  bool Matches(const cmn::FileVersion& version) const {
    return from <= version && (!below || version < *below);
  }
};

std::string LineOf(const std::string& path, const zuna_toolkit::FileType& type, bool json) {
  const std::string kind(cmn::KindName(type.kind));
  const std::string version = cmn::VersionText(type.version);
  if (!json) return Printable(path) + ": " + kind + ", version " + version + '\n';
  return "{\"schemaVersion\": 1, " + PathJson("path", path) + ", \"kind\": \"" + kind +
         "data\", \"fileVersion\": \"" + version + "\"}\n";
}

/// Throws zuna_toolkit::Error, also for the text of a version whose files are no text.
zuna_toolkit::FileType TypeToList(zuna_toolkit::OpenedFile& file) {
  return zuna_toolkit::IsTextForm(file) ? zuna_toolkit::ReadDocument(file).type()
                                        : zuna_toolkit::Detect(file);
}

Outcome ListOne(const std::string& path, const ListOptions& options, const Keys& keys) {
  const auto bytes = ReadInput(path, zuna_toolkit::kMaxFileSize);
  const zuna_toolkit::FileType type = ReadEncryptedOrPlain(bytes, InputName(path), keys, TypeToList);
  Outcome outcome;
  if (options.Matches(type.version)) {
    outcome.text = LineOf(path, type, options.json);
  } else {
    outcome.status = Status::kSkipped;
  }
  return outcome;
}

void RunList(const ListOptions& options, Context& context) {
  const Reading reading = PrepareReading(options.inputs, context, options.json);
  const std::vector<zuna_toolkit::Input>& inputs = reading.inputs;
  bool has_matched = false;
  Batch batch;
  batch.work = [&](std::size_t number) {
    const std::string& path = inputs[number].path;
    const auto list = [&] { return ListOne(path, options, reading.keys); };
    return options.json ? WithFailureJson(path, list) : list();
  };
  batch.take = [&](const Outcome& outcome) { has_matched = has_matched || outcome.status == Status::kDone; };
  RunAll(inputs.size(), options.inputs, context, batch);
  if (has_matched || inputs.empty() || context.code != ExitCode::kDone) return;
  const Failure failure(ErrorCode::kNothingMatched, "list", "none of the files is of these versions",
                        "give another range");
  if (options.json) TellInJson(failure);
  throw failure;
}

/// Adds an option for a version, which `take` gets.
template <typename Take>
void AddVersion(CLI::App& command, const std::string& name, const std::string& description, Take&& take) {
  const auto check = [](const std::string& text) { return cmn::ParseVersion(text) ? "" : NotAVersion(); };
  command
      .add_option_function<std::string>(
          name, [take](const std::string& text) { take(*cmn::ParseVersion(text)); }, description)
      ->type_name("VERSION")
      ->check(CLI::Validator(check, ""));
}

}  // namespace

void AddListCommand(CLI::App& app, Context& context) {
  CLI::App* command =
      app.add_subcommand("list", "List shows and logs, encrypted or not, with their kinds and versions");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<ListOptions>();
  AddInputs(*command, options->inputs);
  AddVersion(*command, "--from", "Only files of this version and higher ones",
             [options](const cmn::FileVersion& version) { options->from = version; });
  AddVersion(*command, "--below", "Only files of lower versions than this",
             [options](const cmn::FileVersion& version) { options->below = version; });
  command->add_flag("--json", options->json, "Write a line of JSON for each file, failed ones too");
  context.SetWork(*command, [options, &context] { RunList(*options, context); });
}

}  // namespace zuna_cli
