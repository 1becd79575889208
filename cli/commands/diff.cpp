// zuna-convert diff (docs/keeping-shows-in-git.md)
#include <memory>
#include <optional>

#include "cli/batch/report.h"
#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/shared/json_text.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "kit/utf8.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/comparison/difference_lines.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Difference;
using zuna_toolkit::DifferenceLine;
using zuna_toolkit::OpenedFile;

struct DiffOptions {
  std::string before;
  std::string after;
  bool json = false;
};

/// Writes to standard output in pieces: all differences together may be much larger than the documents.
class PiecewiseOutput {
 public:
  /// Whether a piece is written, or was tried to be.
  bool has_begun() const { return has_begun_; }

  void Write(const std::string& text) {
    constexpr std::size_t kPiece = 65536;  // bytes
    kept_ += text;
    if (kept_.size() >= kPiece) Flush();
  }

  void Flush() {
    has_begun_ = true;
    WriteStandardOutput(kept_);
    kept_.clear();
  }

 private:
  std::string kept_;
  bool has_begun_ = false;
};

OpenedFile Open(const std::string& path, const Keys& keys) {
  return OpenInput(path, keys, zuna_toolkit::Accept::kEncryptedOrPlain).file;
}

void CompareFiles(OpenedFile& before, OpenedFile& after, const zuna_toolkit::DifferenceSink& sink) {
  ReadOrNameRescue([&] { zuna_toolkit::Compare(before, after, sink); });
}

/// Writes lines, grouped by song: below a line that names the song.
class GroupedLines {
 public:
  explicit GroupedLines(PiecewiseOutput& output) : output_(output) {}

  void Write(const DifferenceLine& line) {
    const bool is_in_song = !line.song.empty() && !line.is_about_song;
    if (is_in_song && song_ != line.song) {
      output_.Write(Printable("song " + line.song + ':') + '\n');
      song_ = line.song;
    }
    output_.Write((is_in_song ? "  " : "") + Printable(line.text) + '\n');
  }

 private:
  PiecewiseOutput& output_;
  std::optional<std::string> song_;  ///< that was named last
};

/// Returns whether there are no differences.
bool WriteText(OpenedFile& before, OpenedFile& after, PiecewiseOutput& output) {
  bool is_same = true;
  GroupedLines grouped(output);
  zuna_toolkit::DifferenceLines lines([&](const DifferenceLine& line) { grouped.Write(line); });
  CompareFiles(before, after, [&](const Difference& difference) {
    is_same = false;
    lines.Add(difference);
  });
  lines.Finish();
  output.Flush();
  return is_same;
}

/// A song number as it stands in every difference of the song: a long one is cut.
std::string ShortNumber(const std::string& number) {
  constexpr std::size_t kMost = 64;  // bytes
  return number.size() <= kMost ? number : std::string(kit::CutUtf8(number, kMost)) + "...";
}

/// The first members of the line of JSON.
std::string InputsJson(const DiffOptions& options) {
  return "{\"schemaVersion\": 1, " + PathJson("before", options.before) + ", " +
         PathJson("after", options.after);
}

/// The same as one line of JSON.
bool WriteJson(const DiffOptions& options, OpenedFile& before, OpenedFile& after, PiecewiseOutput& output) {
  bool is_same = true;
  const auto begin = [&](const char* same) {
    output.Write(InputsJson(options) + ", \"same\": " + same + ", \"differences\": [");
  };
  CompareFiles(before, after, [&](const Difference& difference) {
    if (is_same) begin("false");
    Difference shown = difference;
    shown.song = ShortNumber(shown.song);
    output.Write((is_same ? "{" : ", {") + DifferenceJson(shown) + ", " + AfterTickJson(shown.place) + "}");
    is_same = false;
  });
  if (is_same) begin("true");
  output.Write("]}\n");
  output.Flush();
  return is_same;
}

void RunDiff(const DiffOptions& options, Context& context, PiecewiseOutput& output) {
  context.CheckInputs({options.before, options.after});
  const Keys keys = context.ReadKeys();
  OpenedFile before = Open(options.before, keys);
  OpenedFile after = Open(options.after, keys);
  const bool is_same =
      options.json ? WriteJson(options, before, after, output) : WriteText(before, after, output);
  if (!is_same) context.code = ExitCode::kNegative;
}

/// The same; a failure is told in JSON too.
void RunAndTell(const DiffOptions& options, Context& context) {
  PiecewiseOutput output;
  try {
    RunDiff(options, context, output);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    const Failure failure = CurrentFailure();
    if (options.json && failure.code() != ErrorCode::kUsage && !output.has_begun()) {
      WriteStandardOutput(InputsJson(options) + ", " + FailureMembersJson(failure) + "}\n");
    }
    throw;
  }
}

}  // namespace

void AddDiffCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "diff", "Tell what differs between two shows or two logs of any versions; exit code 1 where they do");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<DiffOptions>();
  command
      ->add_option("BEFORE", options->before,
                   "The show or log as it was, encrypted or not, or its text; - for standard input")
      ->required();
  command->add_option("AFTER", options->after, "The show or log as it is now; - for standard input")
      ->required();
  command->add_flag("--json", options->json,
                    "Write one line of JSON with every single difference, or about a failure");
  context.SetWork(*command, [options, &context] { RunAndTell(*options, context); });
}

}  // namespace zuna_cli
