// zuna-convert convert
#include <memory>

#include "cli/commands/context.h"
#include "cli/commands/document_text.h"
#include "cli/commands/input.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_cli {

namespace {

struct Options : Paths {
  cmn::FileVersion version;
};

void Run(const Options& options, Context& context) {
  Destination destination = context.CheckPaths(options.output, {options.input});
  const Keys keys = context.ReadKeys();
  auto [file, key] = OpenInput(options.input, keys);
  const zuna_toolkit::Document input = zuna_toolkit::ReadDocument(file, zuna_toolkit::Expected::kCurrent);
  RequireTarget(input.type().kind, options.version);
  const zuna_toolkit::Document document = zuna_toolkit::Convert(input, options.version);
  context.Note(file.name(), CountsText(document) + ", " + cmn::VersionText(input.type().version) + " -> " +
                                cmn::VersionText(options.version));
  context.Seal(document, *key, destination);
}

}  // namespace

void AddConvertCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddFileCommand(app, context, "convert",
                                     "Write a show or a log of a current version at another one", *options);
  AddTarget(*command, options->version);
  context.SetWork(*command, [options, &context] { Run(*options, context); });
}

}  // namespace zuna_cli
