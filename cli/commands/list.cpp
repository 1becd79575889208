// zuna-convert list
#include <memory>
#include <optional>
#include <span>

#include "cli/commands/context.h"
#include "cli/commands/input.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "kit/file.h"
#include "kit/path.h"

namespace zuna_cli {

namespace {

constexpr const char* kExtension = ".showdata";

struct Options {
  std::string folder;
  cmn::FileVersion from;
  std::optional<cmn::FileVersion> below;

  bool Matches(const cmn::FileVersion& version) const {
    return from <= version && (!below || version < *below);
  }
};

/// The version of the show in the file at `path`; nothing where it is no regular file.
std::optional<cmn::FileVersion> VersionOf(const std::string& path, const Keys& keys) {
  const auto content = kit::ReadRegularFile(path, zuna_toolkit::kMaxFileSize);
  if (!content) return std::nullopt;
  const std::span<const std::uint8_t> bytes = content->bytes();
  zuna_toolkit::OpenedFile file = DecryptInput({bytes.begin(), bytes.end()}, path, keys).file;
  const zuna_toolkit::FileType type = zuna_toolkit::Detect(file);
  zuna_toolkit::RequireShow(type, file.name());
  return type.version;
}

/// The line about every show that matches. Continues after files that cannot be read and sets the exit code
/// then.
std::string ListShows(const Options& options, const Keys& keys, Context& context) {
  std::string text;
  for (const std::string& name : kit::listdir(options.folder)) {
    if (kit::path::extension(name) != kExtension) continue;
    try {
      const auto version = VersionOf(kit::path::Join(options.folder, name), keys);
      if (!version || !options.Matches(*version)) continue;
      text += Printable(name) + ": " + cmn::VersionText(*version) + '\n';
    } catch (const std::exception& error) {
      context.ReportPart(error);
    }
  }
  return text;
}

void Run(const Options& options, Context& context) {
  RequireFolder(options.folder, "give the folder of the shows");
  const std::string text = ListShows(options, context.ReadKeys(), context);
  WriteStandardOutput(text);
  if (!text.empty() || context.code != ExitCode::kDone) return;
  throw Failure(
      ErrorCode::kNothingMatched, options.folder,
      std::string("has no show of these versions in a file whose name ends in \"") + kExtension + "\"",
      "give another folder or range");
}

/// Adds an option for a version, which `take` gets.
template <typename Take>
void AddVersion(CLI::App& command, const std::string& name, const std::string& description, Take&& take) {
  const auto check = [](const std::string& text) { return cmn::ParseVersion(text) ? "" : NotAVersion(); };
  command
      .add_option_function<std::string>(
          name, [take](const std::string& text) { take(*cmn::ParseVersion(text)); }, description)
      ->type_name("VERSION")
      ->check(CLI::Validator(check, ""));
}

}  // namespace

void AddListCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("list", "List the show files of a folder with their versions");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<Options>();
  command
      ->add_option("DIR", options->folder,
                   "The folder; only files whose names end in .showdata are looked at")
      ->required();
  AddVersion(*command, "--from", "Only shows of this version and higher ones",
             [options](const cmn::FileVersion& version) { options->from = version; });
  AddVersion(*command, "--below", "Only shows of lower versions than this",
             [options](const cmn::FileVersion& version) { options->below = version; });
  context.SetWork(*command, [options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
