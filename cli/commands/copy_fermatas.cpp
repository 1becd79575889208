// zuna-convert copy-fermatas
#include <memory>

#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/conversion/copy_fermatas.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Counted;

struct Options {
  std::string source;
  std::string destination;
};

std::string FermatasText(std::size_t fermatas, std::size_t attaccas) {
  return Counted(fermatas, "fermata", "fermatas") + " and " + Counted(attaccas, "attacca", "attaccas");
}

void Run(const Options& options, Context& context) {
  if (options.destination == kStandardStream) {
    throw Failure(ErrorCode::kUsage, "command line", "the destination is rewritten in its place",
                  "give a file");
  }
  Destination place = context.CheckPaths({options.destination, true}, {options.source});
  const Keys keys = context.ReadKeys();
  zuna_toolkit::OpenedFile source = OpenInput(options.source, keys).file;
  auto [destination, key] = OpenInput(options.destination, keys);
  const zuna_toolkit::FermataCopy copy =
      zuna_toolkit::CopyFermatas(zuna_toolkit::ReadDocument(source), zuna_toolkit::ReadDocument(destination));
  if (copy.replaced_fermatas + copy.replaced_attaccas > 0) {
    context.Note(destination.name(),
                 FermatasText(copy.replaced_fermatas, copy.replaced_attaccas) + " of its own replaced");
  }
  context.Note(destination.name(), FermatasText(copy.fermatas, copy.attaccas) + " copied from " +
                                       source.name() + ", in " + Counted(copy.songs, "song", "songs"));
  context.Seal(copy.document, *key, place);
}

}  // namespace

void AddCopyFermatasCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "copy-fermatas", "Give the songs of a log the attaccas and fermatas that they have in another log");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<Options>();
  command
      ->add_option("SOURCE", options->source,
                   "The log that has them, of a current version; - for standard input")
      ->required();
  command
      ->add_option("DESTINATION", options->destination,
                   "The log that gets them, of a current version, which it keeps; rewritten in its place")
      ->required();
  context.SetWork(*command, [options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
