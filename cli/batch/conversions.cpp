// Commands that make one file of each input.
#include "cli/batch/conversions.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <set>
#include <utility>

#include "cli/batch/finished_work.h"
#include "cli/batch/report.h"
#include "cli/batch/runner.h"
#include "cli/batch/verification.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/shared/loss_text.h"
#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "toolkit/document/write.h"
#include "toolkit/words.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;
using Bytes = std::vector<std::uint8_t>;

bool Exists(const std::string& path) {
  std::error_code ignored;
  return path != kStandardStream && std::filesystem::exists(path, ignored);
}

/// What the work on one input has made.
struct Result {
  Outcome outcome;
  std::optional<Bytes> bytes;  ///< to be written
};

/// Works on single inputs. Several threads use it at a time.
class Converter {
 public:
  Converter(const ConversionOptions& options, const Context& context, const Conversion& conversion,
            const Keys& keys)
      : options_(options), context_(context), conversion_(conversion), keys_(keys) {
    if (options.resume) finished_ = FinishedWork(options.report);
  }

  /// What it throws is a lack of memory or an interrupt.
  Outcome operator()(const Job& job) const {
    ReportLine line;
    line.path = job.input.path;
    line.options = conversion_.options;
    line.output = job.output;
    try {
      return Convert(job, line);
    } catch (const std::bad_alloc&) {
      throw;
    } catch (...) {
      Outcome outcome;
      outcome.failure = CurrentFailure();
      if (outcome.failure->code() == ErrorCode::kInterrupted) throw;
      outcome.status = Status::kFailed;
      if (HasReport()) outcome.report = ReportJson(line, outcome.status, &*outcome.failure);
      return outcome;
    }
  }

 private:
  bool HasReport() const { return !options_.report.empty(); }

  Outcome Convert(const Job& job, ReportLine& line) const {
    const bool exists = !options_.outputs.in_place && Exists(job.output);
    if (exists && options_.outputs.skip_existing) {
      return Passed(job.output, "exists and is passed over", line);
    }
    // What a run wrote that was killed before it reported so is known by its bytes.
    const bool may_be_finished = exists && options_.resume && !options_.outputs.force;
    std::optional<Destination> destination;
    if (!may_be_finished) Place(job, destination);
    Bytes bytes = ReadInput(job.input.path, zuna_toolkit::kMaxFileSize);
    if (HasReport()) {
      line.digest = zuna_sec::Sha256Text(bytes);
      line.companion = CompanionOf(job);
      if (IsFinished(job, exists, line))
        return Passed(job.input.path, "is finished, as the report says", line);
    }
    auto [file, key] = DecryptInput(bytes, InputName(job.input.path), keys_);
    bytes = {};
    Result result = Make(job, std::move(file), *key, line);
    if (!result.bytes || options_.outputs.dry_run) return std::move(result.outcome);
    if (destination) {
      destination->Write(*result.bytes);
    } else if (ReadInput(job.output, zuna_toolkit::kMaxFileSize) != *result.bytes) {
      throw Failure(ErrorCode::kOutputExists, job.output, "exists",
                    "give --force to replace it, or another output");
    }
    return std::move(result.outcome);
  }

  /// Finds the place of the output, which is none of what is read; only looks at it where nothing is to be
  /// written.
  void Place(const Job& job, std::optional<Destination>& destination) const {
    std::vector<std::string> inputs = context_.CheckInputs({});
    if (!options_.outputs.in_place) inputs.push_back(job.input.path);
    if (conversion_.companion_path) {
      if (const auto companion = conversion_.companion_path(job.input)) inputs.push_back(*companion);
    }
    const Output output{job.output, options_.outputs.force || options_.outputs.in_place,
                        options_.outputs.in_place};
    if (options_.outputs.dry_run) {
      if (job.output != kStandardStream) RequirePlace(job.output, inputs, output.force);
      return;
    }
    if (!options_.outputs.folder.empty()) MakeFolderOf(job.output);
    destination.emplace(output, inputs);
  }

  /// Reads a document, and lets go of the plaintext.
  Document Read(zuna_toolkit::OpenedFile file) const {
    return zuna_toolkit::ReadDocument(file, conversion_.expected);
  }

  Result Make(const Job& job, zuna_toolkit::OpenedFile&& file, const CipherKey& key, ReportLine& line) const {
    std::optional<Document> document = Read(std::move(file));
    std::optional<Converted> converted = conversion_.convert(*document, job.input, keys_);
    Result result;
    if (!converted) {
      result.outcome.status = Status::kCurrent;
      Say(result.outcome, document->name(),
          "is of version " + cmn::VersionText(document->type().version) + " already" +
              (options_.outputs.in_place || options_.outputs.dry_run ? "" : ", and is written as it is"));
    } else {
      const Losses losses(*document, converted->document, HasReport());
      RequireAccepted(losses, document->name());
      Tell(*converted, *document, losses, result.outcome);
      line.losses = losses.json();
      document = std::move(converted->document);  // What was converted is not needed any more.
    }
    if (converted || !options_.outputs.in_place) {
      result.bytes = Seal(*document, key, OutputName(job.output));
      if (HasReport() && !options_.outputs.dry_run) {
        line.finished = FinishedMark(line, zuna_sec::Sha256Text(*result.bytes));
      }
      if (context_.LacksKey(key)) Say(result.outcome, OutputName(job.output), kEmptyKeyNote);
    }
    if (HasReport()) result.outcome.report = ReportJson(line, result.outcome.status, nullptr);
    return result;
  }

  static void Say(Outcome& outcome, const std::string& name, const std::string& text) {
    outcome.messages.push_back({false, NoteLine(name, text)});
  }

  static void Tell(const Converted& converted, const Document& before, const Losses& losses,
                   Outcome& outcome) {
    const std::string& name = before.name();
    for (const std::string& note : converted.notes) Say(outcome, name, note);
    for (const std::string& loss : losses.Lines()) outcome.messages.push_back({true, NoteLine(name, loss)});
    outcome.has_losses = !losses.empty();
    const Document& counted = before.type().is_legacy() ? converted.document : before;
    Say(outcome, name, CountsText(counted) + ", " + converted.text + (losses.empty() ? ", lossless" : ""));
  }

  void RequireAccepted(const Losses& losses, const std::string& name) const {
    if (!options_.fail_on_loss) return;
    std::string refused;
    for (const std::string& code : losses.Codes()) {
      const auto& accepted = options_.accepted;
      if (std::find(accepted.begin(), accepted.end(), code) != accepted.end()) continue;
      refused += (refused.empty() ? "" : ",") + code;
    }
    if (refused.empty()) return;
    throw Failure(ErrorCode::kLossRefused, name, "would lose something (" + refused + ")",
                  "give --accept " + refused + " to let it go, or leave out --fail-on");
  }

  /// The bytes of the output. Throws Failure (kInternal) where they do not read back as they should.
  Bytes Seal(const Document& document, const CipherKey& key, const std::string& name) const {
    Bytes bytes = EncryptedBytes(*zuna_toolkit::CipherStreamOf(document, key), name);
    if (!options_.outputs.verify) return bytes;
    zuna_toolkit::OpenedFile again = zuna_toolkit::OpenedFile::FromBytes(bytes, name, key);
    if (HoldTheSame(document, Read(std::move(again)))) return bytes;
    throw Failure(ErrorCode::kInternal, name, "would not read back as it is written, and is not written",
                  "please report it");
  }

  Outcome Passed(const std::string& name, const std::string& text, const ReportLine& line) const {
    Outcome outcome;
    outcome.status = Status::kSkipped;
    Say(outcome, name, text);
    const bool is_reported = finished_.Contains(line.finished);
    if (HasReport() && !is_reported) outcome.report = ReportJson(line, outcome.status, nullptr);
    return outcome;
  }

  /// Whether the report has this input as finished, and what was written then is there.
  bool IsFinished(const Job& job, bool exists, ReportLine& line) const {
    if (finished_.empty() || (!exists && !options_.outputs.in_place)) return false;
    const Bytes output = ReadInput(job.output, zuna_toolkit::kMaxFileSize);
    const std::string mark = FinishedMark(line, zuna_sec::Sha256Text(output));
    if (!finished_.Contains(mark)) return false;
    line.finished = mark;
    return true;
  }

  /// The companion that is there; empty for none.
  std::string CompanionOf(const Job& job) const {
    const auto path = conversion_.companion_path ? conversion_.companion_path(job.input) : std::nullopt;
    return path && Exists(*path) ? *path : "";
  }

  const ConversionOptions& options_;
  const Context& context_;
  const Conversion& conversion_;
  const Keys& keys_;
  FinishedWork finished_;
};

}  // namespace

void ConvertAll(const ConversionOptions& options, Context& context, const Conversion& conversion) {
  const std::vector<zuna_toolkit::Input> inputs =
      CollectInputs(options.inputs, context, options.outputs.folder, conversion.companion);
  const std::vector<Job> jobs = PlanOutputs(inputs, options.outputs);
  const Keys keys = context.ReadKeys();
  const Converter converter(options, context, conversion, keys);
  const std::unique_ptr<Report> report =
      options.report.empty() ? nullptr : std::make_unique<Report>(options.report);
  if (!options.outputs.dry_run) RemoveLeftovers(jobs);
  Batch batch;
  batch.work = [&](std::size_t number) { return converter(jobs[number]); };
  batch.take = [&](const Outcome& outcome) {
    if (report) report->Add(outcome.report);
  };
  batch.done = options.outputs.dry_run ? "would be done" : "done";
  batch.writes = true;
  RunAll(jobs.size(), options.inputs, context, batch);
}

}  // namespace zuna_cli
