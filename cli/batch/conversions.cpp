// Commands that make one file of each input.
#include "cli/batch/conversions.h"

#include <filesystem>
#include <memory>
#include <new>
#include <utility>

#include "cli/batch/conversion_messages.h"
#include "cli/batch/finished_work.h"
#include "cli/batch/loss_policy.h"
#include "cli/batch/placing.h"
#include "cli/batch/report.h"
#include "cli/batch/runner.h"
#include "cli/batch/sealing.h"
#include "cli/shared/input.h"
#include "cli/shared/losses.h"
#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;
using Bytes = std::vector<std::uint8_t>;

/// What the work on one input has made.
struct Result {
  Outcome outcome;
  std::optional<Bytes> bytes;  ///< to be written
};

/// Works on single inputs. Several threads use it at a time.
class Converter {
 public:
  Converter(const ConversionOptions& options, const Context& context, const Conversion& conversion,
            const Keys& keys, bool is_one_of_many, FinishedWork finished, Report* report)
      : options_(options),
        context_(context),
        conversion_(conversion),
        keys_(keys),
        is_one_of_many_(is_one_of_many),
        finished_(std::move(finished)),
        placing_(options, context, conversion, finished_),
        report_(report) {}

  /// What it throws is a lack of memory or an interrupt.
  Outcome operator()(const Job& job) const {
    ReportLine line;
    line.path = job.input.path;
    line.options = conversion_.options(job.input) + PolicyText(options_);
    line.output = job.output;
    line.is_dry_run = options_.outputs.dry_run;
    try {
      return Convert(job, line);
    } catch (const std::bad_alloc&) {
      throw;
    } catch (...) {
      Outcome outcome;
      outcome.failure = placing_.WithRemedy(CurrentFailure());
      if (outcome.failure->code() == ErrorCode::kInterrupted) throw;
      outcome.status = Status::kFailed;
      if (!Exists(line.backup)) line.backup.clear();
      if (HasReport()) outcome.report = ReportJson(line, outcome.status, &*outcome.failure);
      return outcome;
    }
  }

 private:
  bool HasReport() const { return report_ != nullptr; }

  Outcome Convert(const Job& job, ReportLine& line) const {
    if (!job.same_as.empty()) {
      Outcome outcome =
          Passed(job.input.path, "is the same file as " + job.same_as + ", and is passed over", line);
      if (job.same_as == job.input.path) outcome.report.clear();  // That line would hide the other one.
      return outcome;
    }
    const bool exists = !options_.outputs.in_place && Exists(job.output);
    std::error_code ignored;  // What cannot be looked at is told where its place is found.
    if (exists && options_.outputs.skip_existing && !std::filesystem::is_directory(job.output, ignored)) {
      return Passed(job.output, "exists and is passed over", line);
    }
    std::optional<Destination> destination = placing_.Find(job);
    Bytes bytes = ReadInput(job.input.path, zuna_toolkit::kMaxFileSize);
    if (HasReport()) {
      line.digest = zuna_sec::Sha256Text(bytes);
      line.companion = CompanionOf(job);
      if (IsFinished(job, exists, line))
        return Passed(job.input.path, "is finished, as the report says", line);
    }
    auto [file, key] = DecryptInput(bytes, InputName(job.input.path), keys_);
    Result result = Make(job, std::move(file), *key, std::move(bytes), line);
    const bool is_written = result.bytes && !options_.outputs.dry_run;
    if (is_written && destination) line.backup = destination->KeepOld();
    if (HasReport() && !line.backup.empty()) report_->Add(BegunJson(line));
    // Nothing needs memory once the output has its place.
    if (HasReport() && !IsReported(result.outcome, line)) {
      result.outcome.report = ReportJson(line, result.outcome.status, nullptr);
    }
    if (result.bytes) placing_.Write(job, *result.bytes, destination);
    return std::move(result.outcome);
  }

  /// Reads a document, and lets go of the plaintext.
  Document Read(zuna_toolkit::OpenedFile file) const {
    return zuna_toolkit::ReadDocument(file, conversion_.expected);
  }

  /// `bytes` are those of the file.
  Result Make(const Job& job, zuna_toolkit::OpenedFile&& file, const CipherKey& key, Bytes bytes,
              ReportLine& line) const {
    std::optional<Document> document = Read(std::move(file));
    std::optional<Converted> converted = conversion_.convert(*document, job.input, keys_);
    Result result;
    if (converted) {
      bytes = Bytes();
      const Losses losses(*document, converted->document, HasReport());
      line.notes = converted->notes;
      line.losses = losses.json();
      RequireAccepted(losses, options_, document->name());
      TellConversion(*converted, *document, losses, is_one_of_many_, result.outcome);
      document = std::move(converted->document);  // What was converted is not needed any more.
      bytes = Sealed(*document, key, OutputName(job.output), options_.outputs.verify);
    } else {
      result.outcome.status = Status::kCurrent;
      const bool is_written = !options_.outputs.in_place && !options_.outputs.dry_run;
      Say(result.outcome, document->name(),
          "is of version " + cmn::VersionText(document->type().version) + " already" +
              (is_written ? ", and is written as it is" : ""));
      if (options_.outputs.in_place) bytes = Bytes();
    }
    if (!bytes.empty()) {
      if (HasReport() && !options_.outputs.dry_run) {
        const std::string digest = zuna_sec::Sha256Text(bytes);
        line.finished = FinishedMark(line, digest);
        line.written = WrittenMark(line.path, line.output, digest);
      }
      if (context_.LacksKey(key)) Say(result.outcome, OutputName(job.output), kEmptyKeyNote);
      result.bytes = std::move(bytes);
    }
    return result;
  }

  Outcome Passed(const std::string& name, const std::string& text, const ReportLine& line) const {
    Outcome outcome;
    outcome.status = Status::kSkipped;
    Say(outcome, name, text);
    const bool is_reported = finished_.Contains(line.finished) && finished_.IsLast(line.path);
    if (HasReport() && !is_reported) outcome.report = ReportJson(line, outcome.status, nullptr);
    return outcome;
  }

  /// Whether the report has this input as finished, and what was written then is there.
  bool IsFinished(const Job& job, bool exists, ReportLine& line) const {
    if (finished_.empty() || !exists) return false;
    const auto output = kit::ReadRegularFile(job.output, zuna_toolkit::kMaxFileSize);
    if (!output) return false;
    const std::string digest = zuna_sec::Sha256Text(output->bytes());
    const std::string mark = FinishedMark(line, digest);
    if (!finished_.Contains(mark)) return false;
    line.finished = mark;
    line.written = WrittenMark(line.path, line.output, digest);
    return true;
  }

  /// Whether an input that needs nothing is what an earlier run wrote in its place. That run's line stays the
  /// last one: it has the backup and the losses.
  bool IsReported(const Outcome& outcome, const ReportLine& line) const {
    return outcome.status == Status::kCurrent && options_.outputs.in_place && finished_.IsLast(line.path) &&
           finished_.Contains(WrittenMark(line.path, line.output, line.digest));
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
  bool is_one_of_many_;  ///< of the inputs, each of which says less then
  FinishedWork finished_;
  Placing placing_;
  Report* report_;  ///< null for none
};

}  // namespace

void ConvertAll(const ConversionOptions& options, Context& context, const Conversion& conversion) {
  const std::vector<zuna_toolkit::Input> inputs =
      CollectInputs(options.inputs, context, options.outputs.folder, conversion.companion);
  std::vector<Job> jobs = PlanOutputs(inputs, options.outputs, conversion.companion_path);
  KeepShard(jobs, options.inputs.shard, [](const Job& job) -> const std::string& { return job.input.path; });
  const Keys keys = context.ReadKeys();
  FinishedWork finished = options.resume ? FinishedWork(options.report) : FinishedWork();
  const std::unique_ptr<Report> report =
      options.report.empty() ? nullptr : std::make_unique<Report>(options.report);
  const Converter converter(options, context, conversion, keys, jobs.size() > 1, std::move(finished),
                            report.get());
  // With shards, other machines may work in the same folders, and not all file systems tell of their locks.
  if (!options.outputs.dry_run && options.inputs.shard.count == 1) RemoveLeftovers(jobs);
  Batch batch;
  batch.work = [&](std::size_t number) { return converter(jobs[number]); };
  batch.take = [&](const Outcome& outcome) {
    if (report) report->Add(outcome.report);
  };
  batch.done = {options.outputs.dry_run ? "would be done" : "done"};
  batch.writes = true;
  RunAll(jobs.size(), options.inputs, context, batch);
}

}  // namespace zuna_cli
