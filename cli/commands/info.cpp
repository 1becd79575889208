#include <memory>

#include "cli/base/file_io.h"
#include "cli/base/messages.h"
#include "cli/base/text.h"
#include "cli/commands/context.h"
#include "cli/files/file_type.h"
#include "cli/logs/log_file.h"
#include "cli/logs/log_info.h"
#include "cli/shows/show_file.h"
#include "cli/shows/show_info.h"

namespace zuna_cli {

namespace {

struct Options {
  std::vector<std::string> inputs;
  bool json = false;
};

ShowInfo ShowInfoOf(InputFile& file, const cmn::FileVersion& version) {
  if (version == cmn::FileVersion{}) {
    return {file.name(), version, std::nullopt, SongInfosOf(ReadLegacyShow(file).show)};
  }
  const zuna_midi::ShowData show = ReadCurrentShow(file);
  return {file.name(), version, show.show_name, SongInfosOf(show)};
}

std::string InfoOf(const std::string& path, const CipherKey& key, bool json) {
  InputFile file(path, key);
  const FileType type = TypeOf(file);
  const auto text = [&](const auto& info) { return json ? InfoJson(info) : InfoText(info); };
  if (type.is_log()) return text(LogInfo{file.name(), type.version, ReadAnyLog(file)});
  return text(ShowInfoOf(file, type.version));
}

/// Tells about all inputs; goes on past those that fail, and sets the exit code then.
std::string InfoOfAll(const Options& options, const CipherKey& key, Context& context) {
  std::string text;
  for (const std::string& path : options.inputs) {
    try {
      const std::string info = InfoOf(path, key, options.json);
      if (options.json && !text.empty()) text += ",\n ";
      text += info;
    } catch (const Failure& failure) {
      if (options.inputs.size() == 1) throw;
      PrintError(failure);
      context.code = ExitCode::kPartFailed;
    }
  }
  return text;
}

void Run(const Options& options, Context& context) {
  RequireUsableInputs(options.inputs);
  const std::string text = InfoOfAll(options, context.Key(), context);
  const bool several = options.inputs.size() > 1;
  WriteStandardOutput(!options.json ? text : several ? "[" + text + "]\n" : text + "\n");
}

}  // namespace

void AddInfoCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "info",
      "Tell the version, name, songs and counts of shows and logs; several inputs go on past bad ones");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<Options>();
  command->add_option("IN", options->inputs, "The input files; - for standard input")->required();
  command->add_flag("--json", options->json,
                    "Write JSON: an object for one input, an array for several (without those that failed). "
                    "Bytes of names that are no UTF-8 are written as U+FFFD");
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
