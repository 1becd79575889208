// zuna-convert down
#include <memory>

#include "cli/commands/context.h"
#include "cli/commands/document_text.h"
#include "cli/commands/input.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_cli {

namespace {

void Run(const Paths& paths, Context& context) {
  Destination destination = context.CheckPaths(paths.output, {paths.input});
  const Keys keys = context.ReadKeys();
  auto [file, key] = OpenInput(paths.input, keys);
  const zuna_toolkit::Document current = zuna_toolkit::ReadDocument(file, zuna_toolkit::Expected::kCurrent);
  const zuna_toolkit::Document legacy = zuna_toolkit::Down(current);
  for (const std::string& line : DownLossLines(current, legacy)) context.Note(file.name(), line);
  context.Note(file.name(),
               CountsText(current) + ", " + cmn::VersionText(current.type().version) + " -> 0.0");
  context.Seal(legacy, *key, destination);
}

}  // namespace

void AddDownCommand(CLI::App& app, Context& context) {
  const auto paths = std::make_shared<Paths>();
  CLI::App* command = AddFileCommand(app, context, "down",
                                     "Bring a show or a log of a current version to version 0.0", *paths);
  context.SetWork(*command, [paths, &context] { Run(*paths, context); });
}

}  // namespace zuna_cli
