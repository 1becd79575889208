#include <memory>

#include "cli/base/version_text.h"
#include "cli/commands/context.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"
#include "cli/shows/show_output.h"

namespace zuna_cli {

namespace {

struct Options : Paths {
  cmn::FileVersion version;
};

void Run(const Options& options, Context& context) {
  context.CheckPaths(options.output, {options.input});
  const CipherKey key = context.Key();
  InputFile file(options.input, key);
  const cmn::FileVersion version = RequireCurrentShow(file);
  const zuna_midi::ShowData show = ReadCurrentShow(file);
  WriteShow(show, options.version, key, options.output);
  context.Note(file.name(), CountsText(SongInfosOf(show)) + ", " + VersionText(version) + " -> " +
                                VersionText(options.version));
}

}  // namespace

void AddConvertCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      AddFileCommand(app, context, "convert", "Write a show of a current version at another one", *options);
  AddTarget(*command, options->version);
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
