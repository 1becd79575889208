// zuna-convert info
#include <memory>

#include "cli/commands/context.h"
#include "cli/commands/document_text.h"
#include "cli/commands/input.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

namespace {

struct Options {
  std::vector<std::string> inputs;
  bool json = false;
};

std::string InfoOf(const std::string& path, const Keys& keys, bool json) {
  zuna_toolkit::OpenedFile file = OpenInput(path, keys).file;
  const zuna_toolkit::Document document = zuna_toolkit::ReadDocument(file);
  return json ? InfoJson(document) : InfoText(document);
}

/// Describes all inputs. Continues after failed ones and sets the exit code then.
std::string InfoOfAll(const Options& options, const Keys& keys, Context& context) {
  std::string text;
  for (const std::string& path : options.inputs) {
    try {
      const std::string info = InfoOf(path, keys, options.json);
      if (options.json && !text.empty()) text += ",\n ";
      text += info;
    } catch (const std::exception& error) {
      if (options.inputs.size() == 1) throw;
      context.ReportPart(error);
    }
  }
  return text;
}

void Run(const Options& options, Context& context) {
  context.CheckInputs(options.inputs);
  const std::string text = InfoOfAll(options, context.ReadKeys(), context);
  const bool is_array = options.json && options.inputs.size() > 1;
  if (is_array) WriteStandardOutput("[");
  WriteStandardOutput(text);
  if (options.json) WriteStandardOutput(is_array ? "]\n" : "\n");
}

}  // namespace

void AddInfoCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "info", "Tell the version, name, songs and counts of shows and logs; continues after failed inputs");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<Options>();
  command->add_option("IN", options->inputs, "The input files; - for standard input")->required();
  command->add_flag("--json", options->json,
                    "Write JSON: an object for one input, an array for several (without those that failed). "
                    "Bytes of names that are no UTF-8 are written as U+FFFD");
  context.SetWork(*command, [options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
