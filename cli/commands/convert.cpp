#include <memory>

#include "cli/base/version_text.h"
#include "cli/commands/context.h"
#include "cli/files/encrypted_output.h"
#include "cli/files/file_type.h"
#include "cli/logs/log_file.h"
#include "cli/logs/log_info.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"

namespace zuna_cli {

namespace {

struct Options : Paths {
  cmn::FileVersion version;
};

/// Writes a show or a log at the version asked for.
template <class Model>
void Write(const Model& model, const Options& options, const CipherKey& key) {
  WriteEncrypted(options.output, key, [&](std::ostream& os) { model.WriteBinary(os, options.version); });
}

/// Gives the counts of what is in it.
std::string ConvertShow(InputFile& file, const Options& options, const CipherKey& key) {
  const zuna_midi::ShowData show = ReadCurrentShow(file);
  Write(show, options, key);
  return CountsText(SongInfosOf(show));
}

std::string ConvertLog(InputFile& file, const Options& options, const CipherKey& key) {
  RequireLogVersion(options.version);
  const CL::ChangeLog log = ReadCurrentLog(file);
  Write(log, options, key);
  return CountsText(log);
}

void Run(const Options& options, Context& context) {
  context.CheckPaths(options.output, {options.input});
  const CipherKey key = context.Key();
  InputFile file(options.input, key);
  const FileType type = RequireCurrent(file);
  const std::string counts = type.is_log() ? ConvertLog(file, options, key) : ConvertShow(file, options, key);
  context.Note(file.name(),
               counts + ", " + VersionText(type.version) + " -> " + VersionText(options.version));
}

}  // namespace

void AddConvertCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddFileCommand(app, context, "convert",
                                     "Write a show or a log of a current version at another one", *options);
  AddTarget(*command, options->version);
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
