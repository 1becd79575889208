#include <memory>

#include "cli/base/errors.h"
#include "cli/base/file_io.h"
#include "cli/commands/context.h"
#include "cli/files/file_type.h"
#include "cli/logs/fermatas.h"
#include "cli/logs/log_file.h"
#include "format_converter/attacca_fermata.h"

namespace zuna_cli {

namespace {

struct Options {
  std::string source;
  std::string destination;
};

/// Reads the log in `file`. Throws Failure; `remedy` is for a log of version 0.0.
CL::ChangeLog ReadLogWithFermatas(InputFile& file, const std::string& remedy) {
  const FileType type = TypeOf(file);
  if (!type.is_log()) {
    throw Failure(ExitCode::kBadInput, file.name(), "is a show, and this command takes logs; give a log");
  }
  if (type.is_legacy()) {
    throw Failure(ExitCode::kBadInput, file.name(),
                  "is a log of version 0.0, which holds no attaccas and fermatas; " + remedy);
  }
  return ReadCurrentLog(file);
}

std::string FermatasText(std::size_t fermatas, std::size_t attaccas) {
  return Counted(fermatas, "fermata", "fermatas") + " and " + Counted(attaccas, "attacca", "attaccas");
}

FermataCopy Examine(InputFile& source, InputFile& destination) {
  const CL::ChangeLog from = ReadLogWithFermatas(source, "give the log from before it went down");
  const CL::ChangeLog to = ReadLogWithFermatas(destination, "use up first");
  FermataCopy copy = CompareFermatas(from, to);
  if (copy.missing_songs.empty()) return copy;
  throw Failure(
      ExitCode::kBadInput, destination.name(),
      "lacks songs of " + source.name() + ": " + copy.missing_songs + "; give a log of the same songs");
}

void Run(const Options& options, Context& context) {
  if (options.destination == kStandardStream) {
    throw Failure(ExitCode::kUsage, "command line", "the destination is rewritten in its place; give a file");
  }
  const Output output{options.destination, true};
  context.CheckPaths(output, {options.source});
  const CipherKey key = context.Key();
  InputFile source(options.source, key);
  InputFile destination(options.destination, key);
  const FermataCopy copy = Examine(source, destination);
  OnFile(destination.name(), [&] {
    zuna_sec::TwoFishCipherStream result(
        copy_attaccas_and_fermatas_vector(source.cipher().GetEncryptedBytes(),
                                          destination.cipher().GetEncryptedBytes(), key.key, key.iv),
        key.key, key.iv);
    output.Write(result);
  });
  if (copy.replaced_fermatas + copy.replaced_attaccas > 0) {
    context.Note(destination.name(),
                 FermatasText(copy.replaced_fermatas, copy.replaced_attaccas) + " of its own gave way");
  }
  context.Note(destination.name(), FermatasText(copy.fermatas, copy.attaccas) + " copied from " +
                                       source.name() + ", in " + Counted(copy.songs, "song", "songs"));
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
  command->callback([options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
