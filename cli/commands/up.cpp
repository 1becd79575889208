#include <memory>

#include "cli/base/version_text.h"
#include "cli/commands/context.h"
#include "cli/shows/show_conversion.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"
#include "cli/shows/show_output.h"
#include "cli/shows/up_report.h"

namespace zuna_cli {

namespace {

struct Options : Paths {
  std::string companion;
  cmn::FileVersion version;
};

zuna_midi::ShowData ConvertUp(InputFile& file, Context& context) {
  const LegacyShow legacy = ReadLegacyShow(file);
  zuna_midi::ShowData show = ToCurrent(legacy.show, file.name());
  for (const std::string& loss : UpLosses(legacy, show)) context.Note(file.name(), loss);
  return show;
}

void Run(const Options& options, Context& context) {
  context.CheckPaths(options.output, {options.input, options.companion});
  const CipherKey key = context.Key();
  InputFile file(options.input, key);
  RequireLegacyShow(file);
  zuna_midi::ShowData show = ConvertUp(file, context);
  show.show_name = ReadCompanionShowName(options.companion, key);
  WriteShow(show, options.version, key, options.output);
  context.Note(file.name(), CountsText(SongInfosOf(show)) + ", 0.0 -> " + VersionText(options.version) +
                                ", named \"" + show.show_name + "\" by its log");
}

}  // namespace

void AddUpCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      AddFileCommand(app, context, "up", "Bring a show of version 0.0 to a current version", *options);
  AddTarget(*command, options->version);
  command
      ->add_option("--companion", options->companion,
                   "The log of version 0.0 of the same show, encrypted or plain; it tells the show's name")
      ->required()
      ->type_name("FILE");
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
