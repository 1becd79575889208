// zuna-convert info
#include <memory>

#include "cli/batch/report.h"
#include "cli/batch/runner.h"
#include "cli/shared/context.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

namespace {

struct InfoOptions {
  InputOptions inputs;
  bool json = false;
};

std::string InfoOf(const std::string& path, const Keys& keys, bool json) {
  const auto [document, is_encrypted] = ReadEncryptedOrPlain(path, keys);
  return json ? InfoJson(document, path, is_encrypted) + '\n' : InfoText(document, is_encrypted);
}

void RunInfo(const InfoOptions& options, Context& context) {
  const Reading reading = PrepareReading(options.inputs, context, options.json);
  const std::vector<zuna_toolkit::Input>& inputs = reading.inputs;
  const auto info = [&](const std::string& path) {
    Outcome outcome;
    outcome.text = InfoOf(path, reading.keys, options.json);
    return outcome;
  };
  Batch batch;
  batch.work = [&](std::size_t number) {
    const std::string& path = inputs[number].path;
    return options.json ? WithFailureJson(path, [&] { return info(path); }) : info(path);
  };
  RunAll(inputs.size(), options.inputs, context, batch);
}

}  // namespace

void AddInfoCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "info", "Tell the version, name, songs and counts of shows and logs, encrypted or not");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<InfoOptions>();
  AddInputs(*command, options->inputs);
  command->add_flag(
      "--json", options->json,
      "Write a line of JSON for each input, failed ones too. Bytes of names that are no UTF-8 are "
      "written as U+FFFD");
  context.SetWork(*command, [options, &context] { RunInfo(*options, context); });
}

}  // namespace zuna_cli
