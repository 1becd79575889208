#include <istream>
#include <memory>

#include "cli/base/file_io.h"
#include "cli/commands/context.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

namespace {

struct Options {
  std::string input;
  Output output;
};

void Run(const Options& options, const Context& context) {
  context.CheckPaths(options.output, {options.input});
  const CipherKey key = context.Key();
  zuna_sec::TwoFishCipherStream cipher("", key.key, key.iv);
  const auto bytes = ReadBytes(options.input, kMaxFileSize);
  cipher.GetStream().write(reinterpret_cast<const char*>(bytes.data()),
                           static_cast<std::streamsize>(bytes.size()));
  options.output.Write(cipher);
}

}  // namespace

void AddEncryptCommand(CLI::App& app, Context& context) {
  CLI::App* command =
      app.add_subcommand("encrypt", "Encrypt plaintext as it is, such as an edited text form");
  const auto options = std::make_shared<Options>();
  AddInput(*command, options->input);
  AddOutput(*command, options->output);
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
