// zuna-convert copy-fermatas
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/batch/output_options.h"
#include "cli/shared/context.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/conversion/copy_fermatas.h"
#include "toolkit/document/write.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Counted;

struct CopyFermatasOptions {
  std::string source;
  std::string destination;
  Output output;  ///< without a path, the destination is written itself
  bool dry_run = false;
};

/// Where the result goes, and the files that are none of its places.
struct ResultPlace {
  Output output;
  std::vector<std::string> inputs;
};

std::string FermatasText(std::size_t fermatas, std::size_t attaccas) {
  return Counted(fermatas, "fermata", "fermatas") + " and " + Counted(attaccas, "attacca", "attaccas");
}

ResultPlace PlaceOf(const CopyFermatasOptions& options) {
  if (!options.output.path.empty()) return {options.output, {options.source, options.destination}};
  if (options.destination == kStandardStream) {
    throw Failure(ErrorCode::kUsage, "command line", "the destination is rewritten in its place",
                  "give a file, or -o");
  }
  return {{InPlace(options.destination), true, true}, {options.source}};
}

/// Nothing where nothing is to be written.
std::optional<Destination> Open(const ResultPlace& place, bool dry_run, const Context& context) {
  const std::vector<std::string> inputs = context.CheckInputs(place.inputs);
  const Output& output = place.output;
  if (!dry_run) return std::optional<Destination>(std::in_place, output, inputs);
  if (output.path != kStandardStream) RequirePlace(output.path, inputs, output.force);
  return std::nullopt;
}

void RequireNothingErased(const zuna_toolkit::FermataCopy& copy) {
  if (copy.erased_in.empty()) return;
  throw Failure(ErrorCode::kOwnFermatas, copy.document.name(),
                FermatasText(copy.erased_fermatas, copy.erased_attaccas) + " of its own would be erased (" +
                    SongsText(copy.erased_in) + ")",
                "give --force to replace them");
}

void RunCopyFermatas(const CopyFermatasOptions& options, Context& context) {
  const ResultPlace place = PlaceOf(options);
  std::optional<Destination> opened = Open(place, options.dry_run, context);
  const Keys keys = context.ReadKeys();
  zuna_toolkit::OpenedFile source = OpenInput(options.source, keys).file;
  auto [destination, key] = OpenInput(options.destination, keys);
  const auto read = [](zuna_toolkit::OpenedFile& file) {
    return ReadOrNameRescue([&] { return zuna_toolkit::ReadDocument(file); });
  };
  const zuna_toolkit::FermataCopy copy = zuna_toolkit::CopyFermatas(read(source), read(destination));
  if (!options.output.force) RequireNothingErased(copy);
  const std::string name = options.output.path.empty() ? destination.name() : OutputName(place.output.path);
  const std::string would_be = options.dry_run ? " would be" : "";
  if (!copy.erased_in.empty()) {
    context.Note(name, FermatasText(copy.erased_fermatas, copy.erased_attaccas) + " of " +
                           destination.name() + would_be + " erased");
  }
  context.Note(name, FermatasText(copy.fermatas, copy.attaccas) + would_be + " copied from " + source.name() +
                         ", in " + Counted(copy.songs, "song", "songs"));
  if (!opened) return;
  context.NoteSealed(*key, *opened);
  const auto bytes = EncryptedBytes(*zuna_toolkit::CipherStreamOf(copy.document, *key), name);
  // What is there already needs no backup of itself.
  if (place.output.keep_old && Holds(place.output.path, bytes)) return;
  opened->KeepOld();
  opened->Write(bytes);
}

}  // namespace

void AddCopyFermatasCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "copy-fermatas", "Give the songs of a log the attaccas and fermatas that they have in another log");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<CopyFermatasOptions>();
  command
      ->add_option("SOURCE", options->source,
                   "The log that has them, of a current version; - for standard input")
      ->required();
  command
      ->add_option("DESTINATION", options->destination,
                   "The log that gets them, of a current version, which it keeps; rewritten in its place "
                   "unless -o is given, where the old file stays beside it as NAME.~N~")
      ->required();
  command
      ->add_option("-o,--output", options->output.path,
                   "Write the result to OUT and leave DESTINATION as it is; - for standard output")
      ->type_name("OUT");
  command->add_flag("--force", options->output.force,
                    "Erase fermatas and attaccas that DESTINATION has itself; replace OUT when it exists");
  command->add_flag("-n,--dry-run", options->dry_run, "Do everything but write");
  context.SetWork(*command, [options, &context] { RunCopyFermatas(*options, context); });
}

}  // namespace zuna_cli
