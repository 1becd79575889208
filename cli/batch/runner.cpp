// Runs a command over its inputs and tells what became of them.
#include "cli/batch/runner.h"

#include <unistd.h>

#include <algorithm>
#include <map>
#include <new>
#include <numeric>
#include <optional>
#include <thread>
#include <vector>

#include "cli/batch/failure_list.h"
#include "cli/batch/loss_totals.h"
#include "cli/terminal/signals.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Counted;

/// The outcome after which no other input is tried: the exception that is being handled ends the command.
Outcome Ending() {
  Outcome outcome;
  outcome.status = Status::kFailed;
  outcome.ends_command = std::current_exception();
  return outcome;
}

/// What `work` returns for an input, or the failure that it throws. Throws nothing.
Outcome OutcomeOf(const Work& work, std::size_t number) try {
  try {
    return work(number);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    Outcome outcome;
    outcome.status = Status::kFailed;
    outcome.failure = CurrentFailure();
    if (outcome.failure->code() == ErrorCode::kInterrupted) throw;
    return outcome;
  }
} catch (...) {  // The message of a failure may lack memory, too.
  return Ending();
}

/// Tells the outcomes of one command.
class Telling {
 public:
  Telling(std::size_t total, const InputOptions& options, Context& context, const Batch& batch)
      : total_(total),
        options_(options),
        context_(context),
        batch_(batch),
        progress_(Form(), total),
        done_(std::max<std::size_t>(1, batch.done.size())) {}

  /// Returns whether to go on.
  bool Take(Outcome&& outcome) {
    try {
      if (outcome.ends_command) std::rethrow_exception(outcome.ends_command);
      if (outcome.failure) failures_.push_back({std::move(outcome.input), *outcome.failure});
      Tell(outcome);
      return failures_.empty() || !options_.fail_fast;
    } catch (...) {
      if (!ends_command_) ends_command_ = std::current_exception();
      return false;
    }
  }

  /// Throws where the command failed as a whole, and for a single input that failed.
  void End() {
    progress_.Clear();
    if (total_ == 1) {
      if (ends_command_) std::rethrow_exception(ends_command_);
      if (!failures_.empty()) throw failures_.front().failure;
    } else {
      TellSummary();
      TellLosses();
      for (const Failure& failure : FailuresToTell(failures_)) PrintError(failure);
      TellHowToGoOn();
      if (ends_command_) std::rethrow_exception(ends_command_);
    }
    if (!failures_.empty()) {
      context_.code = ExitCode::kPartFailed;
    } else if (is_negative_) {
      context_.code = ExitCode::kNegative;
    }
  }

  std::size_t finished() const {
    return std::accumulate(done_.begin(), done_.end(), current_) + skipped_ + failures_.size();
  }

 private:
  ProgressForm Form() const {
    if (options_.progress != ProgressForm::kNone || total_ == 1) return options_.progress;
    const bool is_wanted = context_.quiet() == 0 && isatty(STDERR_FILENO) != 0;
    return is_wanted ? ProgressForm::kTerminal : ProgressForm::kNone;
  }

  void Tell(const Outcome& outcome) {
    progress_.Step();
    Count(outcome);
    if (batch_.take) batch_.take(outcome);
    TellMessages(outcome);
    if (outcome.text.empty()) return;
    progress_.Clear();
    WriteStandardOutput(outcome.text);
  }

  void Count(const Outcome& outcome) {
    if (outcome.status == Status::kDone) ++done_.at(outcome.group);
    current_ += outcome.status == Status::kCurrent ? 1U : 0U;
    skipped_ += outcome.status == Status::kSkipped ? 1U : 0U;
    if (total_ > 1) CountLosses(outcome);
    is_negative_ = is_negative_ || outcome.is_negative;
  }

  /// For the summary of many inputs. A single one needs no memory once its output has its place.
  void CountLosses(const Outcome& outcome) {
    losses_.Add(outcome.losses);
    if (!outcome.losses.empty()) ++lossy_[outcome.status];
  }

  void TellMessages(const Outcome& outcome) {
    for (const Message& message : outcome.messages) {
      if (context_.quiet() > (message.is_loss ? 1 : 0)) continue;
      progress_.Clear();
      PrintLine(message.line);
    }
  }

  /// How many inputs of this status lose something, between two texts; empty for none.
  std::string LossyText(Status status, const char* before, const char* after) const {
    const auto found = lossy_.find(status);
    return found == lossy_.end() ? "" : before + std::to_string(found->second) + " with losses" + after;
  }

  void TellSummary() const {
    if (context_.quiet() > 0 || batch_.done.empty()) return;
    std::string text;
    for (std::size_t i = 0; i < done_.size(); ++i) {
      zuna_toolkit::AppendListed(text, std::to_string(done_[i]) + ' ' + batch_.done[i]);
    }
    text += done_.size() == 1 ? LossyText(Status::kDone, " (", ")") : LossyText(Status::kDone, ", ", "");
    if (current_ > 0) {
      text += ", " + std::to_string(current_) + " already current" + LossyText(Status::kCurrent, " (", ")");
    }
    if (skipped_ > 0) {
      text += ", " + std::to_string(skipped_) + " skipped" + LossyText(Status::kSkipped, " (", ")");
    }
    text += ", " + std::to_string(failures_.size()) + " failed";
    if (left() > 0) text += ", " + std::to_string(left()) + " not begun" + EarlierText();
    PrintLine(NoteLine(Counted(total_, "file", "files"), text));
  }

  std::size_t left() const { return total_ - finished(); }

  /// How many inputs that are left ended so in an earlier run.
  std::size_t Earlier(Status status) const {
    std::size_t count = 0;
    for (std::size_t number = finished(); batch_.earlier && number < total_; ++number) {
      count += batch_.earlier(number) == status ? 1U : 0U;
    }
    return count;
  }

  std::string EarlierText() const {
    std::string text;
    const std::size_t done = Earlier(Status::kDone);
    const std::size_t failed = Earlier(Status::kFailed);
    if (done > 0) zuna_toolkit::AppendListed(text, std::to_string(done) + " finished");
    if (failed > 0) zuna_toolkit::AppendListed(text, std::to_string(failed) + " failed");
    return text.empty() ? "" : " (earlier: " + text + ')';
  }

  void TellHowToGoOn() const {
    if (left() == 0 || batch_.to_go_on.empty()) return;
    const std::size_t to_do = left() - Earlier(Status::kDone);
    if (to_do == 0) return;
    const std::string files = Counted(to_do, "file", "files");
    std::string text = to_do == 1 ? "is not begun; " : "are not begun; ";
    if (options_.fail_fast && !failures_.empty()) {  // The same command would end at the same file.
      text += "correct what failed or leave out --fail-fast, and ";
    }
    PrintLine(NoteLine(files, text + batch_.to_go_on));
  }

  void TellLosses() const {
    if (context_.quiet() > 1) return;
    for (const std::string& line : losses_.Lines()) PrintLine(line);
  }

  std::size_t total_;
  const InputOptions& options_;
  Context& context_;
  const Batch& batch_;
  Progress progress_;
  LossTotals losses_;
  std::vector<FailedInput> failures_;
  std::exception_ptr ends_command_;
  std::vector<std::size_t> done_;        ///< by group
  std::map<Status, std::size_t> lossy_;  ///< inputs that lose something
  std::size_t current_ = 0;
  std::size_t skipped_ = 0;
  bool is_negative_ = false;
};

unsigned Workers(const InputOptions& options) {
  return options.workers.value_or(std::max(1U, std::thread::hardware_concurrency()));
}

}  // namespace

void RunAll(std::size_t count, const InputOptions& options, Context& context, const Batch& batch) {
  std::optional<DeferSignals> deferred;
  if (batch.writes && count > 1) deferred.emplace();
  Telling telling(count, options, context, batch);
  WorkInOrder(
      count, Workers(options), [&](std::size_t number) { return OutcomeOf(batch.work, number); },
      [&](Outcome&& outcome) { return telling.Take(std::move(outcome)); },
      [&] { return deferred && DeferSignals::IsAsked(); });
  if (deferred) NoteOutput(telling.finished() == count);
  telling.End();
}

}  // namespace zuna_cli
