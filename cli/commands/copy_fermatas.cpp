// zuna-convert copy-fermatas
#include <memory>

#include "cli/shared/context.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/conversion/copy_fermatas.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Counted;

struct CopyFermatasOptions {
  std::string source;
  std::string destination;
  Output output;  ///< without a path, the destination is written itself
};

std::string FermatasText(std::size_t fermatas, std::size_t attaccas) {
  return Counted(fermatas, "fermata", "fermatas") + " and " + Counted(attaccas, "attacca", "attaccas");
}

/// The place of the result, which is neither input unless it is the destination itself.
Destination PlaceOf(const CopyFermatasOptions& options, const Context& context) {
  if (!options.output.path.empty()) {
    return context.CheckPaths(options.output, {options.source, options.destination});
  }
  if (options.destination == kStandardStream) {
    throw Failure(ErrorCode::kUsage, "command line", "the destination is rewritten in its place",
                  "give a file, or -o");
  }
  return context.CheckPaths({options.destination, true}, {options.source});
}

void RequireNothingErased(const zuna_toolkit::FermataCopy& copy) {
  if (copy.erased_in.empty()) return;
  throw Failure(ErrorCode::kOwnFermatas, copy.document.name(),
                FermatasText(copy.erased_fermatas, copy.erased_attaccas) + " of its own would be erased (" +
                    SongsText(copy.erased_in) + ")",
                "give --force to replace them");
}

void RunCopyFermatas(const CopyFermatasOptions& options, Context& context) {
  Destination place = PlaceOf(options, context);
  const Keys keys = context.ReadKeys();
  zuna_toolkit::OpenedFile source = OpenInput(options.source, keys).file;
  auto [destination, key] = OpenInput(options.destination, keys);
  const zuna_toolkit::FermataCopy copy =
      zuna_toolkit::CopyFermatas(zuna_toolkit::ReadDocument(source), zuna_toolkit::ReadDocument(destination));
  if (!options.output.force) RequireNothingErased(copy);
  if (!copy.erased_in.empty()) {
    context.Note(place.name(), FermatasText(copy.erased_fermatas, copy.erased_attaccas) + " of " +
                                   destination.name() + " erased");
  }
  context.Note(place.name(), FermatasText(copy.fermatas, copy.attaccas) + " copied from " + source.name() +
                                 ", in " + Counted(copy.songs, "song", "songs"));
  context.Seal(copy.document, *key, place);
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
                   "unless -o is given")
      ->required();
  command
      ->add_option("-o,--output", options->output.path,
                   "Write the result to OUT and leave DESTINATION as it is; - for standard output")
      ->type_name("OUT");
  command->add_flag("--force", options->output.force,
                    "Erase fermatas and attaccas that DESTINATION has itself; replace OUT when it exists");
  context.SetWork(*command, [options, &context] { RunCopyFermatas(*options, context); });
}

}  // namespace zuna_cli
