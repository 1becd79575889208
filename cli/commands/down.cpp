#include <istream>
#include <memory>

#include "cli/base/version_text.h"
#include "cli/commands/context.h"
#include "cli/shows/legacy_limits.h"
#include "cli/shows/loss_report.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"

namespace zuna_cli {

namespace {

struct Options {
  std::string input;
  Output output;
};

version0::ShowData ConvertDown(const zuna_midi::ShowData& show, const std::string& name,
                               const Context& context) {
  RequireLegacyLimits(show, name);
  return OnFile(name, [&] {
    version0::ShowData legacy(show);
    if (context.quiet) return legacy;
    for (const Loss& loss : DownLosses(show, legacy)) {
      context.Note(name, "format 0.0 does not keep " + LossText(loss));
    }
    return legacy;
  });
}

void Run(const Options& options, const Context& context) {
  context.CheckPaths(options.output, {options.input});
  const CipherKey key = context.Key();
  InputFile file(options.input, key);
  const cmn::FileVersion version = RequireCurrentShow(file);
  const zuna_midi::ShowData show = ReadCurrentShow(file);
  const version0::ShowData legacy = ConvertDown(show, file.name(), context);
  zuna_sec::TwoFishCipherStream cipher("", key.key, key.iv);
  OnFile(file.name(), [&] { legacy.write_binary(cipher.GetStream()); });
  options.output.Write(cipher);
  context.Note(file.name(), CountsText(SongInfosOf(show)) + ", " + VersionText(version) + " -> 0.0");
}

}  // namespace

void AddDownCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("down", "Bring a show of a current version to version 0.0");
  const auto options = std::make_shared<Options>();
  AddInput(*command, options->input);
  AddOutput(*command, options->output);
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
