// The work on single inputs of a command that makes one file of each.
#include "cli/batch/converter.h"

#include <filesystem>
#include <new>
#include <utility>

#include "cli/batch/conversion_messages.h"
#include "cli/batch/loss_policy.h"
#include "cli/batch/sealing.h"
#include "cli/shared/input.h"
#include "cli/shared/loss_kinds_json.h"
#include "cli/shared/losses.h"
#include "cli/terminal/standard_streams.h"
#include "kit/error.h"
#include "kit/file.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

using zuna_toolkit::Document;
using Bytes = std::vector<std::uint8_t>;

Converter::Converter(const ConversionOptions& options, const Context& context, const Conversion& conversion,
                     const Keys& keys, bool is_one_of_many, FinishedWork finished, Report* report)
    : options_(options),
      context_(context),
      conversion_(conversion),
      keys_(keys),
      is_one_of_many_(is_one_of_many),
      finished_(std::move(finished)),
      placing_(options, context, conversion, finished_),
      report_(report) {}

Outcome Converter::operator()(const Job& job) const {
  ReportLine line;
  line.path = job.input.path;
  line.options = conversion_.command;
  line.loss_options = PolicyText(options_);
  line.output = job.output;
  line.is_dry_run = options_.outputs.dry_run;
  try {
    return Convert(job, line);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    Outcome outcome;
    outcome.failure = placing_.WithRemedy(CurrentFailure(), job);
    if (outcome.failure->code() == ErrorCode::kInterrupted) throw;
    outcome.status = Status::kFailed;
    outcome.input = job.input.path;
    if (!Exists(line.backup)) line.backup.clear();
    line.companion_digest.clear();
    const std::string& at_fault = outcome.failure->parts().file;
    if (!at_fault.empty() && at_fault == CompanionOf(job)) line.companion = at_fault;
    if (HasReport()) outcome.report = ReportJson(line, outcome.status, &*outcome.failure);
    return outcome;
  }
}

Outcome Converter::Convert(const Job& job, ReportLine& line) const {
  if (!job.same_as.empty()) {
    if (options_.outputs.in_place) line.output = line.path;  // and not the file that a link leads to
    Outcome outcome =
        Passed(job.input.path, "is the same file as " + job.same_as + ", and is passed over", line);
    if (job.same_as == job.input.path) outcome.report.clear();  // That line would hide the other one.
    return outcome;
  }
  std::error_code ignored;  // What cannot be looked at is told where its place is found.
  if (options_.outputs.skip_existing && Exists(job.output) &&
      !std::filesystem::is_directory(job.output, ignored)) {
    if (auto outcome = PassedAsExisting(job, line)) return std::move(*outcome);
  }
  std::optional<Destination> destination = placing_.Find(job);
  Bytes bytes = ReadInput(job.input.path, zuna_toolkit::kMaxFileSize);
  if (HasReport()) {
    line.digest = zuna_sec::Sha256Text(bytes);
    const FinishedWork::Piece* piece = Finished(job, line);
    if (piece != nullptr && IsAccepted(*piece)) return PassedAsFinished(*piece, line);
  }
  auto [file, key] = DecryptOrNameRescue(bytes, InputName(job.input.path), keys_);
  Result result = Make(job, std::move(file), *key, std::move(bytes), line);
  const bool is_written = result.bytes && !options_.outputs.dry_run;
  if (is_written && destination) line.backup = destination->KeepOld();
  if (HasReport() && !line.backup.empty()) report_->Add(BegunJson(line));
  // Nothing needs memory once the output has its place.
  if (HasReport()) AddFinalLine(result.outcome, line);
  if (result.bytes) placing_.Write(job, *result.bytes, destination);
  return std::move(result.outcome);
}

Document Converter::Read(zuna_toolkit::OpenedFile file) const {
  return ReadOrNameRescue([&] { return zuna_toolkit::ReadDocument(file, conversion_.expected); });
}

Converter::Result Converter::Make(const Job& job, zuna_toolkit::OpenedFile&& file, const CipherKey& key,
                                  Bytes bytes, ReportLine& line) const {
  std::optional<Document> document = Read(std::move(file));
  std::optional<Converted> converted = conversion_.convert(*document, job.input, keys_);
  Result result;
  if (converted) {
    bytes = Bytes();
    const Losses losses(*document, converted->document, converted->is_restored, HasReport());
    line.companion_options = converted->options;
    line.companion = converted->companion;
    line.companion_digest = converted->companion_digest;
    line.notes = converted->notes;
    line.losses = losses.json();
    line.loss_kinds = LossKindsJson(losses.Kinds());
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
    if (HasReport() && !options_.outputs.dry_run) AddMarks(bytes, line);
    if (context_.LacksKey(key)) Say(result.outcome, OutputName(job.output), kEmptyKeyNote);
    result.bytes = std::move(bytes);
  }
  return result;
}

Outcome Converter::Passed(const std::string& name, const std::string& text, const ReportLine& line) const {
  Outcome outcome;
  outcome.status = Status::kSkipped;
  if (!text.empty()) Say(outcome, name, text);
  const bool is_reported = finished_.Contains(line.finished) && !finished_.IsUnfinished(line.path);
  if (HasReport() && !is_reported) outcome.report = ReportJson(line, outcome.status, nullptr);
  return outcome;
}

std::optional<Outcome> Converter::PassedAsExisting(const Job& job, ReportLine& line) const {
  if (!finished_.empty() && Exists(job.input.path)) line.digest = DigestOfFile(job.input.path);
  const FinishedWork::Piece* piece = nullptr;
  try {
    if (!line.digest.empty()) piece = Finished(job, line);
  } catch (const kit::RuntimeError&) {  // It exists, though it cannot be read.
  }
  if (piece == nullptr) return Passed(job.output, "exists and is passed over", line);
  if (!IsAccepted(*piece)) return std::nullopt;
  return PassedAsFinished(*piece, line);
}

Outcome Converter::PassedAsFinished(const FinishedWork::Piece& piece, const ReportLine& line) const {
  const std::string name = InputName(line.path);
  const std::string text = is_one_of_many_ ? "" : "is finished, as the report says";  // a summary counts it
  Outcome outcome = Passed(name, text, line);
  TellEarlierLosses(piece, name, outcome);
  return outcome;
}

void Converter::TellEarlierLosses(const FinishedWork::Piece& piece, const std::string& name,
                                  Outcome& outcome) const {
  if (!IsOfCommand(piece, conversion_.command)) return;
  outcome.losses = LossKindsOfJson(piece.loss_kinds, conversion_.is_up);
  if (is_one_of_many_) return;  // The totals tell them.
  for (const zuna_toolkit::LossKind& kind : outcome.losses) {
    outcome.messages.push_back({true, NoteLine(name, zuna_toolkit::TotalLine(kind))});
  }
}

const FinishedWork::Piece* Converter::Finished(const Job& job, ReportLine& line) const {
  if (finished_.empty() || options_.outputs.in_place || !Exists(job.output)) return nullptr;
  const auto output = kit::ReadRegularFile(job.output, zuna_toolkit::kMaxFileSize);
  if (!output) return nullptr;
  const std::string digest = zuna_sec::Sha256Text(output->bytes());
  const std::string mark = FinishedMark(line, digest);
  const FinishedWork::Piece* piece = finished_.Find(mark);
  if (piece == nullptr || !HasSameCompanion(*piece, CompanionOf(job), conversion_.companion.has_value()))
    return nullptr;
  line.finished = mark;
  line.written = WrittenMark(line.path, line.output, digest);
  return piece;
}

bool Converter::IsAccepted(const FinishedWork::Piece& piece) const {
  return RefusedKinds(LossKindsOfJson(piece.loss_kinds, conversion_.is_up), options_).empty();
}

void Converter::AddMarks(const Bytes& bytes, ReportLine& line) const {
  const std::string digest = zuna_sec::Sha256Text(bytes);
  line.finished = FinishedMark(line, digest);
  line.written = WrittenMark(line.path, line.output, digest);
}

void Converter::AddFinalLine(Outcome& outcome, const ReportLine& line) const {
  if (outcome.status == Status::kCurrent && options_.outputs.in_place) {
    const std::string written = WrittenMark(line.path, line.output, line.digest);
    outcome.report = finished_.DoneLine(written);
    if (!outcome.report.empty()) {
      return TellEarlierLosses(FinishedWork::PieceOf(outcome.report), line.path, outcome);
    }
    const FinishedWork::Piece* piece = finished_.Find(written);
    if (piece != nullptr) TellEarlierLosses(*piece, line.path, outcome);
    if (piece != nullptr && !finished_.IsUnfinished(line.path)) return;
    if (finished_.IsCurrent(line.path, line.digest)) return;
  }
  outcome.report = ReportJson(line, outcome.status, nullptr);
}

std::string Converter::CompanionOf(const Job& job) const {
  const auto path = conversion_.companion_path ? conversion_.companion_path(job.input) : std::nullopt;
  return path && Exists(*path) ? *path : "";
}

}  // namespace zuna_cli
