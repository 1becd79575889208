// zuna-convert diff (docs/keeping-shows-in-git.md)
#include <memory>

#include "cli/commands/difference_text.h"
#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/shared/json_text.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Difference;
using zuna_toolkit::Document;

struct DiffOptions {
  std::string before;
  std::string after;
  bool json = false;
};

/// Writes to standard output in pieces: all differences together may be much larger than the documents.
class PiecewiseOutput {
 public:
  void Write(const std::string& text) {
    constexpr std::size_t kPiece = 65536;  // bytes
    kept_ += text;
    if (kept_.size() >= kPiece) Flush();
  }

  void Flush() {
    WriteStandardOutput(kept_);
    kept_.clear();
  }

 private:
  std::string kept_;
};

Document ReadOne(const std::string& path, const Keys& keys) {
  zuna_toolkit::OpenedFile file = OpenInput(path, keys, zuna_toolkit::Accept::kEncryptedOrPlain).file;
  return zuna_toolkit::ReadDocument(file);
}

/// Returns whether there are no differences.
bool WriteText(const Document& before, const Document& after) {
  PiecewiseOutput output;
  bool is_same = true;
  DifferenceLines lines([&](const std::string& text) { output.Write(text); });
  zuna_toolkit::Compare(before, after, [&](const Difference& difference) {
    is_same = false;
    lines.Add(difference);
  });
  lines.Finish();
  output.Flush();
  return is_same;
}

/// The same as one line of JSON.
bool WriteJson(const DiffOptions& options, const Document& before, const Document& after) {
  PiecewiseOutput output;
  bool is_same = true;
  const auto begin = [&](const char* same) {
    output.Write("{\"schemaVersion\": 1, " + PathJson("before", options.before) + ", " +
                 PathJson("after", options.after) + ", \"same\": " + same + ", \"differences\": [");
  };
  zuna_toolkit::Compare(before, after, [&](const Difference& difference) {
    if (is_same) begin("false");
    output.Write((is_same ? "{" : ", {") + DifferenceJson(difference) + ", " +
                 AfterTickJson(difference.place) + "}");
    is_same = false;
  });
  if (is_same) begin("true");
  output.Write("]}\n");
  output.Flush();
  return is_same;
}

void RunDiff(const DiffOptions& options, Context& context) {
  context.CheckInputs({options.before, options.after});
  const Keys keys = context.ReadKeys();
  const Document before = ReadOne(options.before, keys);
  const Document after = ReadOne(options.after, keys);
  const bool is_same = options.json ? WriteJson(options, before, after) : WriteText(before, after);
  if (!is_same) context.code = ExitCode::kNegative;
}

}  // namespace

void AddDiffCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "diff", "Tell what differs between two shows or two logs of any versions; exit code 1 where they do");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<DiffOptions>();
  command
      ->add_option("BEFORE", options->before,
                   "The show or log as it was, encrypted or not; - for standard input")
      ->required();
  command->add_option("AFTER", options->after, "The show or log as it is now; - for standard input")
      ->required();
  command->add_flag("--json", options->json, "Write one line of JSON with every single difference");
  context.SetWork(*command, [options, &context] { RunDiff(*options, context); });
}

}  // namespace zuna_cli
