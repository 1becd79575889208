// The options of the commands that make one file of each input.
#include <algorithm>

#include "cli/batch/conversions.h"
#include "cli/terminal/standard_streams.h"
#include "kit/nearest.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_cli {

namespace {

std::string CheckFailOn(const std::string& text) {
  return text == kFailOnLoss || text == kFailOnAnyLoss ? "" : "its value is loss or any-loss";
}

std::string CheckLossCode(const std::string& text) {
  const auto codes = zuna_toolkit::LossExplanations();
  std::vector<std::string> known;
  for (const zuna_toolkit::Explanation& row : codes) known.emplace_back(row.code);
  const bool is_known = std::find(known.begin(), known.end(), text) != known.end();
  return is_known ? "" : "there is no loss of the code \"" + text + '"' + kit::Suggestion(text, known);
}

/// Some options change only what others do.
void RequireWhatIsNeeded(const ConversionOptions& options) {
  if (options.resume && options.report.empty()) {
    throw Failure(ErrorCode::kUsage, "command line", "--resume needs the report to resume",
                  "give --report FILE");
  }
  if (options.report == kStandardStream) {
    throw Failure(ErrorCode::kUsage, "command line", "a report is added to a file", "give --report FILE");
  }
  if (!options.accepted.empty() && options.fail_on.empty()) {
    throw Failure(ErrorCode::kUsage, "command line", "--accept is about --fail-on, which is not given",
                  "give --fail-on loss, or leave out --accept");
  }
}

}  // namespace

CLI::App* AddConversionCommand(CLI::App& app, Context& context, const std::string& name,
                               const std::string& description, ConversionOptions& options) {
  CLI::App* command = app.add_subcommand(name, description);
  AddSharedOptions(*command, context);
  AddInputs(*command, options.inputs);
  AddOutputs(*command, options.outputs);
  command
      ->add_option("--report", options.report,
                   "Add a line of JSON to FILE for each finished input: what became of it, with all losses")
      ->type_name("FILE");
  command->add_flag("--resume", options.resume,
                    "Pass over inputs that the report has as finished, with the same content and options");
  command
      ->add_option(
          "--fail-on", options.fail_on,
          "loss: write nothing that loses what matters; any-loss: nor what loses anything else, such as "
          "a name that up brings back")
      ->type_name("loss|any-loss")
      ->check(CLI::Validator(CheckFailOn, ""));
  command->add_option("--accept", options.accepted, "Codes of losses that --fail-on lets through")
      ->type_name("CODE,...")
      ->delimiter(',')
      ->check(CLI::Validator(CheckLossCode, ""))
      ->allow_extra_args(false);
  command->parse_complete_callback([&options] { RequireWhatIsNeeded(options); });
  return command;
}

}  // namespace zuna_cli
