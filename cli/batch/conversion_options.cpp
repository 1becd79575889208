// The options of the commands that make one file of each input.
#include "cli/batch/conversions.h"

namespace zuna_cli {

namespace {

std::string CheckFailOn(const std::string& text) { return text == "loss" ? "" : "its value is loss"; }

void RequireReport(const ConversionOptions& options) {
  if (!options.resume || !options.report.empty()) return;
  throw Failure(ErrorCode::kUsage, "command line", "--resume needs the report to resume",
                "give --report FILE");
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
      ->add_option_function<std::string>(
          "--fail-on", [&options](const std::string&) { options.fail_on_loss = true; },
          "loss: write nothing that loses anything")
      ->type_name("loss")
      ->check(CLI::Validator(CheckFailOn, ""));
  command->add_option("--accept", options.accepted, "Codes of losses that --fail-on lets through")
      ->type_name("CODE,...")
      ->delimiter(',')
      ->allow_extra_args(false);
  command->parse_complete_callback([&options] { RequireReport(options); });
  return command;
}

}  // namespace zuna_cli
