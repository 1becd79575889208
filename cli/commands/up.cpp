#include <memory>

#include "cli/base/version_text.h"
#include "cli/commands/context.h"
#include "cli/files/encrypted_output.h"
#include "cli/files/file_type.h"
#include "cli/logs/log_file.h"
#include "cli/logs/log_info.h"
#include "cli/logs/log_losses.h"
#include "cli/shows/show_conversion.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"
#include "cli/shows/up_report.h"
#include "format_converter/version0/containers/change_log_header.h"

namespace zuna_cli {

namespace {

struct Options : Paths {
  std::string companion;
  cmn::FileVersion version;
};

std::string Replaced(std::size_t count) {
  return Counted(count, "song gave", "songs gave") + " way to a later song of the same number";
}

/// The show's name as the companion of a show tells it.
std::string ShowNameFrom(const std::string& path, const CipherKey& key) {
  InputFile log = InputFile::EncryptedOrPlain(path, key);
  if (StartOf(log.stream(), version0::kChangeLogMagic.size()) != version0::kChangeLogMagic) {
    throw Failure(ExitCode::kBadInput, log.name(),
                  "is no log of version 0.0 (it does not begin with \"ZUNA\"); give the log of the show");
  }
  log.stream().exceptions(std::ios_base::failbit | std::ios_base::badbit);
  return OnFile(log.name(), [&] { return version0::get_show_name(log.stream()); });
}

/// The show that is the companion of a log.
version0::ShowData ShowFrom(const std::string& path, const CipherKey& key) {
  InputFile show = InputFile::EncryptedOrPlain(path, key);
  const FileType type = TypeOf(show);
  if (type == FileType{}) return ReadLegacyShow(show).show;
  throw Failure(ExitCode::kBadInput, show.name(),
                "is " + TypeText(type) + ", no show of version 0.0; give the show of the log");
}

void UpShow(InputFile& file, const Options& options, const CipherKey& key, Context& context) {
  const LegacyShow legacy = ReadLegacyShow(file);
  zuna_midi::ShowData show = ToCurrent(legacy.show, file.name());
  for (const std::string& loss : UpLosses(legacy, show)) context.Note(file.name(), loss);
  show.show_name = ShowNameFrom(options.companion, key);
  WriteEncrypted(options.output, key, [&](std::ostream& os) { show.WriteBinary(os, options.version); });
  context.Note(file.name(), CountsText(SongInfosOf(show)) + ", 0.0 -> " + VersionText(options.version) +
                                ", named \"" + show.show_name + "\" by its log");
}

void UpLog(InputFile& file, const Options& options, const CipherKey& key, Context& context) {
  RequireLogVersion(options.version);
  const LegacyLog legacy = ReadLegacyLog(file);
  CL::ChangeLog log = legacy.log.get_version_1_0();
  const version0::ShowData show = ShowFrom(options.companion, key);
  for (const std::string& note : TakeDivisions(show, InputName(options.companion), log)) {
    context.Note(file.name(), note);
  }
  if (legacy.replaced_songs > 0) context.Note(file.name(), Replaced(legacy.replaced_songs));
  WriteEncrypted(options.output, key, [&](std::ostream& os) { log.WriteBinary(os, options.version); });
  context.Note(file.name(), CountsText(log) + ", 0.0 -> " + VersionText(options.version) +
                                ", divisions from " + InputName(options.companion));
}

void Run(const Options& options, Context& context) {
  context.CheckPaths(options.output, {options.input, options.companion});
  const CipherKey key = context.Key();
  InputFile file(options.input, key);
  RequireLegacy(file).is_log() ? UpLog(file, options, key, context) : UpShow(file, options, key, context);
}

}  // namespace

void AddUpCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddFileCommand(app, context, "up",
                                     "Bring a show or a log of version 0.0 to a current version", *options);
  AddTarget(*command, options->version);
  command
      ->add_option("--companion", options->companion,
                   "The other file of version 0.0, encrypted or plain: the log of a show, which tells the "
                   "show's name, or the show of a log, which tells the songs' divisions")
      ->required()
      ->type_name("FILE");
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
