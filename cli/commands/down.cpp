#include <istream>
#include <memory>

#include "cli/base/version_text.h"
#include "cli/commands/context.h"
#include "cli/shows/legacy_limits.h"
#include "cli/shows/loss_report.h"
#include "cli/shows/show_conversion.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"

namespace zuna_cli {

namespace {

version0::ShowData ConvertDown(const zuna_midi::ShowData& show, const std::string& name, Context& context) {
  RequireLegacyLimits(show, name);
  version0::ShowData legacy = ToLegacy(show, name);
  if (context.quiet) return legacy;
  for (const Loss& loss : OnFile(name, [&] { return DownLosses(show, legacy); })) {
    context.Note(name, "format 0.0 does not keep " + LossText(loss));
  }
  return legacy;
}

void Run(const Paths& paths, Context& context) {
  context.CheckPaths(paths.output, {paths.input});
  const CipherKey key = context.Key();
  InputFile file(paths.input, key);
  const cmn::FileVersion version = RequireCurrentShow(file);
  const zuna_midi::ShowData show = ReadCurrentShow(file);
  const version0::ShowData legacy = ConvertDown(show, file.name(), context);
  zuna_sec::TwoFishCipherStream cipher("", key.key, key.iv);
  OnFile(file.name(), [&] { legacy.write_binary(cipher.GetStream()); });
  paths.output.Write(cipher);
  context.Note(file.name(), CountsText(SongInfosOf(show)) + ", " + VersionText(version) + " -> 0.0");
}

}  // namespace

void AddDownCommand(CLI::App& app, Context& context) {
  const auto paths = std::make_shared<Paths>();
  CLI::App* command =
      AddFileCommand(app, context, "down", "Bring a show of a current version to version 0.0", *paths);
  command->callback([paths, &context] { Run(*paths, context); });
}

}  // namespace zuna_cli
