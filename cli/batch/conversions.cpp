// Commands that make one file of each input.
#include "cli/batch/conversions.h"

#include <filesystem>
#include <memory>
#include <new>
#include <set>
#include <utility>

#include "cli/batch/converter.h"
#include "cli/batch/runner.h"

namespace zuna_cli {

namespace {

/// What there has to be before the first input is begun.
struct Preparation {
  std::vector<Job> jobs;
  Keys keys;
  FinishedWork finished;
  std::unique_ptr<Report> report;  ///< null for none
};

/// Adds lines about the folders that could not be listed by an earlier run and could by this one.
void ReportListedFolders(const Preparation& made, const Conversion& conversion, bool is_dry_run) {
  std::set<std::filesystem::path> seen;
  for (const Job& job : made.jobs) {
    auto folder = std::filesystem::path(job.input.path).parent_path();
    for (; seen.insert(folder).second; folder = folder.parent_path()) {
      if (!made.finished.HasFailed(folder.string())) continue;
      ReportLine line;
      line.path = folder.string();
      line.is_dry_run = is_dry_run;
      line.options = conversion.command;
      made.report->Add(ReportJson(line, Status::kSkipped, nullptr));
    }
  }
}

Preparation Prepare(const ConversionOptions& options, const Context& context, const Conversion& conversion) {
  Preparation made;
  made.jobs =
      PlanOutputs(CollectInputs(options.inputs, context, options.outputs.folder, conversion.companion),
                  options.outputs, conversion.companion_path);
  KeepShard(made.jobs, options.inputs.shard,
            [](const Job& job) -> const std::string& { return job.input.path; });
  made.keys = context.ReadKeys();
  // The report is opened before it is read: its lock keeps other runs from adding to it in between.
  if (!options.report.empty()) made.report = std::make_unique<Report>(options.report);
  if (options.resume) made.finished = FinishedWork(options.report);
  if (options.resume) ReportListedFolders(made, conversion, options.outputs.dry_run);
  return made;
}

/// Adds a failure before the first input to the report. Wrong usage stays text, and the report of another run
/// is left to it, though that run may have ended since.
void ReportAborted(const ConversionOptions& options, const Failure& failure) {
  if (options.report.empty() || failure.kind() == zuna_toolkit::ErrorKind::kUsage) return;
  if (failure.code() == ErrorCode::kReportInUse) return;
  try {
    Report(options.report).Add(AbortedJson(failure, options.outputs.dry_run));
  } catch (const Failure&) {  // The first failure is the one to tell.
  }
}

Preparation PrepareOrReport(const ConversionOptions& options, const Context& context,
                            const Conversion& conversion) try {
  return Prepare(options, context, conversion);
} catch (const std::bad_alloc&) {
  throw;
} catch (...) {
  ReportAborted(options, CurrentFailure());
  throw;
}

/// How a run that was stopped is gone on with.
std::string ToGoOn(const ConversionOptions& options) {
  std::string same = "give the same command again";
  if (options.outputs.dry_run) return "";
  if (!options.report.empty()) return same + (options.resume ? "" : " with --resume");
  if (options.outputs.in_place || options.outputs.skip_existing) return same;
  return same + " with --skip-existing" + (options.outputs.force ? " in place of --force" : "");
}

}  // namespace

void ConvertAll(const ConversionOptions& options, Context& context, const Conversion& conversion) {
  Preparation made = PrepareOrReport(options, context, conversion);
  const std::vector<Job>& jobs = made.jobs;
  Report* report = made.report.get();
  const Converter converter(options, context, conversion, made.keys, jobs.size() > 1,
                            std::move(made.finished), report);
  // With shards, other machines may work in the same folders, and not all file systems tell of their locks.
  if (!options.outputs.dry_run && options.inputs.shard.count == 1) RemoveLeftovers(jobs);
  const MadeFolders folders(jobs, options.outputs, options.inputs.shard.count);
  Batch batch;
  batch.work = [&](std::size_t number) { return converter(jobs[number]); };
  batch.take = [&](const Outcome& outcome) {
    if (report != nullptr) report->Add(outcome.report);
  };
  batch.earlier = [&](std::size_t number) { return converter.EarlierStatus(jobs[number]); };
  batch.done = {options.outputs.dry_run ? "would be done" : "done"};
  batch.to_go_on = ToGoOn(options);
  batch.writes = true;
  RunAll(jobs.size(), options.inputs, context, batch);
}

}  // namespace zuna_cli
