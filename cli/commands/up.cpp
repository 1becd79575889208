// zuna-convert up
#include <memory>

#include "cli/commands/context.h"
#include "cli/commands/document_text.h"
#include "cli/commands/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

struct Options : Paths {
  std::string companion;
  cmn::FileVersion version;
};

/// Reads what `legacy` needs from its companion.
zuna_toolkit::Companion ReadCompanion(const zuna_toolkit::Document& legacy, zuna_toolkit::OpenedFile& file) {
  if (legacy.type().is_log()) return zuna_toolkit::ReadShowAsCompanion(file);
  return zuna_toolkit::ReadLogAsCompanion(file);
}

/// How the companion of a log differs from it.
std::vector<std::string> CompanionNotes(const zuna_toolkit::UpResult& result, const std::string& companion) {
  using zuna_toolkit::Counted;
  std::vector<std::string> notes;
  std::string unknown;
  for (const std::string& number : result.unknown_songs) zuna_toolkit::AppendListed(unknown, number);
  if (!unknown.empty()) {
    const bool one = result.unknown_songs.size() == 1;
    notes.push_back((one ? "song " : "songs ") + unknown + (one ? " is" : " are") + " not in " + companion +
                    "; the division stays 0");
  }
  if (!result.renamed_songs.empty()) {
    const auto& first = result.renamed_songs.front();
    notes.push_back(Counted(result.renamed_songs.size(), "song has", "songs have") + " another name in " +
                    companion + " (song " + first.number + ": \"" + first.name + "\", there \"" +
                    first.companion_name + "\")");
  }
  return notes;
}

/// What a conversion took from the companion.
std::string TakenText(const zuna_toolkit::Companion& companion, bool is_log) {
  if (is_log) return ", divisions from " + companion.name;
  return ", named \"" + companion.show_name + "\" by its log";
}

void Run(const Options& options, Context& context) {
  Destination destination = context.CheckPaths(options.output, {options.input, options.companion});
  const Keys keys = context.ReadKeys();
  auto [file, key] = OpenInput(options.input, keys);
  const zuna_toolkit::Document legacy = zuna_toolkit::ReadDocument(file, zuna_toolkit::Expected::kLegacy);
  RequireTarget(legacy.type().kind, options.version);
  zuna_toolkit::OpenedFile companion_file =
      OpenInput(options.companion, keys, zuna_toolkit::Accept::kEncryptedOrPlain).file;
  const zuna_toolkit::Companion companion = ReadCompanion(legacy, companion_file);
  const zuna_toolkit::UpResult result = zuna_toolkit::Up(legacy, companion, options.version);
  for (const std::string& note : CompanionNotes(result, companion.name)) context.Note(file.name(), note);
  for (const std::string& line : UpLossLines(legacy, result.document)) context.Note(file.name(), line);
  context.Note(file.name(), CountsText(result.document) + ", 0.0 -> " + cmn::VersionText(options.version) +
                                TakenText(companion, legacy.type().is_log()));
  context.Seal(result.document, *key, destination);
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
  context.SetWork(*command, [options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
