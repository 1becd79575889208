#include <iterator>
#include <memory>

#include "cli/commands/context.h"
#include "cli/shows/show_file.h"

namespace zuna_cli {

namespace {

struct Options {
  std::string input;
  Output output;
};

void Run(const Options& options, const Context& context) {
  context.CheckPaths(options.output, {options.input});
  InputFile file(options.input, context.Key());
  const std::string plaintext{std::istreambuf_iterator<char>(file.stream()), {}};
  options.output.WritePlaintext(plaintext);
}

}  // namespace

void AddDecryptCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("decrypt", "Write the plaintext of an encrypted file as it is");
  const auto options = std::make_shared<Options>();
  AddInput(*command, options->input);
  AddOutput(*command, options->output);
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
