// zuna-convert dump
#include <memory>
#include <utility>

#include "cli/batch/report.h"
#include "cli/commands/offsets_text.h"
#include "cli/shared/context.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/document/text_form.h"

namespace zuna_cli {

namespace {

struct DumpOptions {
  Paths paths;
  bool offsets = false;
  bool json = false;
};

/// Throws Failure (kUsage).
void CheckDumpOptions(const DumpOptions& options) {
  if (options.json && !options.offsets) {
    throw Failure(ErrorCode::kUsage, "command line", "--json is given without --offsets",
                  "give both, or neither: the text is JSON anyway");
  }
  if (options.offsets && options.paths.output.path != kStandardStream) {
    throw Failure(ErrorCode::kUsage, "command line", "--offsets prints to standard output only",
                  "leave -o out");
  }
}

OffsetsInput OpenForOffsets(const std::string& path, const Context& context) {
  context.CheckInputs({path});
  const Keys keys = context.ReadKeys();
  const std::vector<std::uint8_t> bytes = ReadInput(path, zuna_toolkit::kMaxFileSize);
  zuna_toolkit::FieldSource source =
      ReadEncryptedOrPlain(bytes, InputName(path), keys, zuna_toolkit::FieldSourceOf);
  if (source.damage) source.damage = WithRescue(*source.damage);
  return {path, bytes.size() - source.plaintext.size(), std::move(source)};
}

/// Prints what can be read of a damaged file too, and says at the end why it cannot be read.
void RunOffsets(const DumpOptions& options, const Context& context) {
  const std::string& path = options.paths.input;
  const OffsetsInput input = TellingInJson(options.json, path, [&] { return OpenForOffsets(path, context); });
  if (options.json) {
    PrintOffsetsJson(input);
  } else {
    PrintOffsets(input);
  }
  if (input.source.damage) throw zuna_toolkit::Error(*input.source.damage);
}

void RunDump(const Paths& paths, Context& context) {
  Destination destination = context.CheckPaths(paths.output, {paths.input});
  const Keys keys = context.ReadKeys();
  const zuna_toolkit::Document document = ReadEncryptedOrPlain(paths.input, keys).document;
  const std::string text = TextFormOf(document);
  const std::string left_out = zuna_toolkit::LeftOutOfText(document);
  if (!left_out.empty()) context.Note(document.name(), "the text leaves out " + left_out);
  destination.WriteJson(text);
}

}  // namespace

void AddDumpCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<DumpOptions>();
  options->paths.output.path = kStandardStream;
  options->paths.output.is_text = true;
  CLI::App* command = AddFileCommand(
      app, context, "dump", "Write a show or log of any version as JSON text, which build turns back",
      options->paths);
  command->add_flag(
      "--offsets", options->offsets,
      "Print every field instead, with the bytes that it takes in the decrypted file, to standard "
      "output");
  command->add_flag("--json", options->json, "With --offsets: print JSON");
  context.SetWork(*command, [options, &context] {
    CheckDumpOptions(*options);
    if (options->offsets) return RunOffsets(*options, context);
    RunDump(options->paths, context);
  });
}

}  // namespace zuna_cli
