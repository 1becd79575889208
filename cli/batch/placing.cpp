// The places of outputs, and what may be replaced there.
#include "cli/batch/placing.h"

#include <filesystem>
#include <utility>

#include "cli/terminal/standard_streams.h"
#include "kit/error.h"
#include "kit/file.h"

namespace zuna_cli {

using Bytes = std::vector<std::uint8_t>;

bool Exists(const std::string& path) {
  std::error_code ignored;
  return path != kStandardStream && std::filesystem::exists(path, ignored);
}

namespace {

/// Whether what is at the place of an output is what `work` says was written there for the same input.
bool IsWritten(const Job& job, const FinishedWork& work) {
  const std::string digest = Exists(job.output) ? DigestOfFile(job.output) : "";
  return !digest.empty() && work.Contains(WrittenMark(job.input.path, job.output, digest));
}

}  // namespace

Placing::Placing(const ConversionOptions& options, const Context& context, const Conversion& conversion,
                 const FinishedWork& finished)
    : options_(options), context_(context), conversion_(conversion), finished_(finished) {}

bool Placing::MayBeOwn(const Job& job) const {
  const OutputOptions& outputs = options_.outputs;
  std::error_code ignored;
  return options_.resume && !outputs.force && !outputs.in_place && Exists(job.output) &&
         std::filesystem::is_regular_file(job.output, ignored);
}

std::vector<std::string> Placing::ReadBy(const Job& job) const {
  std::vector<std::string> inputs = context_.CheckInputs({});
  if (!options_.outputs.in_place) inputs.push_back(job.input.path);
  if (conversion_.companion_path) {
    if (const auto companion = conversion_.companion_path(job.input)) inputs.push_back(*companion);
  }
  if (!options_.report.empty()) inputs.push_back(options_.report);
  return inputs;
}

std::optional<Destination> Placing::Open(const Job& job, bool replace) const {
  const std::vector<std::string> inputs = ReadBy(job);
  if (options_.outputs.dry_run) {
    if (job.output != kStandardStream) RequirePlace(job.output, inputs, replace);
    return std::nullopt;
  }
  if (!options_.outputs.folder.empty()) MakeFolderOf(job.output);
  return std::optional<Destination>(std::in_place, Output{job.output, replace, options_.outputs.in_place},
                                    inputs);
}

std::optional<Destination> Placing::Find(const Job& job) const {
  if (MayBeOwn(job)) return std::nullopt;
  return Open(job, options_.outputs.force || options_.outputs.in_place);
}

void Placing::RequireOwn(const Job& job) const {
  if (IsWritten(job, finished_)) return;
  throw Failure(ErrorCode::kOutputExists, job.output,
                "exists, and is not what the report says was written for " + job.input.path,
                "give --force to replace it");
}

void Placing::Write(const Job& job, const Bytes& bytes, std::optional<Destination>& destination) const {
  if (destination) return destination->Write(bytes);
  // Nothing was there or an output of an earlier run, and it may be gone by now.
  const bool replaces = MayBeOwn(job);
  if (!replaces && options_.outputs.dry_run) return;
  if (replaces && Holds(job.output, bytes)) return;
  const auto check = [&] {
    if (replaces) RequireOwn(job);
  };
  check();
  std::optional<Destination> found = Open(job, replaces);
  if (found) found->Write(bytes, check);
}

bool Placing::IsInReport(const Job& job) const try {
  if (options_.report.empty()) return false;
  std::call_once(is_reported_read_, [&] { reported_ = FinishedWork(options_.report); });
  return IsWritten(job, reported_);
} catch (const kit::RuntimeError&) {
  return false;
}

Failure Placing::WithRemedy(const Failure& failure, const Job& job) const {
  if (failure.code() != ErrorCode::kOutputExists) return failure;
  zuna_toolkit::ErrorParts parts = failure.parts();
  parts.remedy = "give --force to replace it, ";
  if (options_.resume) {
    parts.remedy += "or --skip-existing to pass over it";
  } else {
    parts.remedy += "--skip-existing to pass over it, or ";
    parts.remedy += IsInReport(job) ? "--resume to go on after the report" : "another output";
  }
  return {failure.code(), std::move(parts)};
}

}  // namespace zuna_cli
