#include <istream>
#include <memory>

#include "cli/base/version_text.h"
#include "cli/commands/context.h"
#include "cli/files/encrypted_output.h"
#include "cli/files/file_type.h"
#include "cli/files/legacy_limits.h"
#include "cli/logs/log_file.h"
#include "cli/logs/log_info.h"
#include "cli/logs/log_losses.h"
#include "cli/shows/loss_report.h"
#include "cli/shows/show_conversion.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"

namespace zuna_cli {

namespace {

void NoteLosses(const std::vector<Loss>& losses, const std::string& name, Context& context) {
  for (const Loss& loss : losses) context.Note(name, "format 0.0 does not keep " + LossText(loss));
}

/// Gives the summary.
std::string DownShow(InputFile& file, const Paths& paths, const CipherKey& key, Context& context) {
  const zuna_midi::ShowData show = ReadCurrentShow(file);
  RequireLegacyLimits(show, file.name());
  const version0::ShowData legacy = ToLegacy(show, file.name());
  if (!context.quiet) {
    NoteLosses(OnFile(file.name(), [&] { return DownLosses(show, legacy); }), file.name(), context);
  }
  WriteEncrypted(paths.output, key, [&](std::ostream& os) { legacy.write_binary(os); });
  return CountsText(SongInfosOf(show));
}

std::string DownLog(InputFile& file, const Paths& paths, const CipherKey& key, Context& context) {
  const CL::ChangeLog log = ReadCurrentLog(file);
  RequireLegacyLimits(log, file.name());
  const version0::ChangeLogV0 legacy(log);
  NoteLosses(DownLosses(log, legacy.get_version_1_0()), file.name(), context);
  WriteEncrypted(paths.output, key, [&](std::ostream& os) { legacy.write_binary(os); });
  return CountsText(log);
}

void Run(const Paths& paths, Context& context) {
  context.CheckPaths(paths.output, {paths.input});
  const CipherKey key = context.Key();
  InputFile file(paths.input, key);
  const FileType type = RequireCurrent(file);
  const std::string counts =
      type.is_log() ? DownLog(file, paths, key, context) : DownShow(file, paths, key, context);
  context.Note(file.name(), counts + ", " + VersionText(type.version) + " -> 0.0");
}

}  // namespace

void AddDownCommand(CLI::App& app, Context& context) {
  const auto paths = std::make_shared<Paths>();
  CLI::App* command = AddFileCommand(app, context, "down",
                                     "Bring a show or a log of a current version to version 0.0", *paths);
  command->callback([paths, &context] { Run(*paths, context); });
}

}  // namespace zuna_cli
