// zuna-convert dump
#include <memory>

#include "cli/shared/context.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/document/text_form.h"

namespace zuna_cli {

namespace {

void RunDump(const Paths& paths, Context& context) {
  Destination destination = context.CheckPaths(paths.output, {paths.input});
  const Keys keys = context.ReadKeys();
  zuna_toolkit::OpenedFile file = OpenInput(paths.input, keys, zuna_toolkit::Accept::kEncryptedOrPlain).file;
  const zuna_toolkit::Document document = zuna_toolkit::ReadDocument(file);
  const std::string text = TextFormOf(document);
  const std::string left_out = zuna_toolkit::LeftOutOfText(document);
  if (!left_out.empty()) context.Note(file.name(), "the text leaves out " + left_out);
  destination.WriteJson(text);
}

}  // namespace

void AddDumpCommand(CLI::App& app, Context& context) {
  const auto paths = std::make_shared<Paths>();
  paths->output.path = kStandardStream;
  paths->output.is_text = true;
  CLI::App* command =
      AddFileCommand(app, context, "dump",
                     "Write a show or log of any version as JSON text, which build turns back", *paths);
  context.SetWork(*command, [paths, &context] { RunDump(*paths, context); });
}

}  // namespace zuna_cli
