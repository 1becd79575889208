// The report: a line of JSON for each finished input.
#pragma once

#include <functional>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "cli/batch/outcome.h"

namespace zuna_cli {

/// The key of the mark by which finished work is known again (finished_work.h).
inline constexpr std::string_view kFinishedKey = "\"finished\"";
/// The key of the mark by which its output is known again.
inline constexpr std::string_view kWrittenKey = "\"written\"";
/// The key of the digest of the input.
inline constexpr std::string_view kDigestKey = "\"digest\"";
/// The key of the command and what changes its result.
inline constexpr std::string_view kOptionsKey = "\"options\"";
/// The key of what tells that nothing was written.
inline constexpr std::string_view kDryRunKey = "\"dryRun\"";
/// The key of what was lost, by kind.
inline constexpr std::string_view kLossKindsKey = "\"lossKinds\"";
/// The key of the companion that was read, as PathJson() takes it.
inline constexpr std::string_view kCompanion = "companion";
/// The key of the digest of that companion.
inline constexpr std::string_view kCompanionDigestKey = "\"companionDigest\"";

/// What a line of the report tells.
struct ReportLine {
  std::string path;               ///< of the input
  std::string digest;             ///< SHA-256 of its bytes; empty where it could not be read
  std::string options;            ///< the command and what changes its result
  std::string loss_options;       ///< those about which losses may be; may be empty
  std::string companion_options;  ///< those about companions that changed the result; may be empty
  std::string companion;          ///< the path of the companion that was read; may be empty
  std::string companion_digest;   ///< SHA-256 of its bytes; may be empty
  bool is_dry_run = false;        ///< nothing is written
  std::string output;
  std::string backup;  ///< the name that the old file in the place of the output got; may be empty
  std::vector<std::string> notes;  ///< what there is to say about the companion
  std::string losses;              ///< objects of JSON, separated by commas
  std::string loss_kinds;          ///< the same by kind, as LossKindsJson() writes them
  std::string finished;            ///< the mark of finished work; empty where it failed
  std::string written;             ///< the mark of its output; empty where `finished` is
};

/// The line, with its line break. `failure` is null where there is none.
std::string ReportJson(const ReportLine& line, Status status, const Failure* failure);

/// The line, with its line break, about an old file that has its backup: what is written in its place
/// follows. After a kill, nothing else tells where the old file is.
std::string BegunJson(const ReportLine& line);

/// Whether BegunJson() made `line`.
bool IsBegun(std::string_view line);

/// Whether `line` is of an input that had the version already.
bool IsCurrent(std::string_view line);

/// Whether `line` is of an input that was passed over.
bool IsSkipped(std::string_view line);

/// Whether `line` is of an input that failed.
bool IsFailed(std::string_view line);

/// The line, with its line break, about what is done now and was begun by `begun`, a line without its break.
std::string DoneJson(std::string_view begun);

/// The line, with its line break, about a failure before the first input. It has no path.
std::string AbortedJson(const Failure& failure, bool is_dry_run);

/// The members of an object: "exitCode": …, "error": …
std::string FailureMembersJson(const Failure& failure);

/// A line of JSON, with its line break, about a failure. `path` is that of the input; empty where it was of
/// no single one.
std::string FailureJson(const std::string& path, const Failure& failure);

/// Writes the line about a failure to standard output. Wrong usage stays text.
void TellInJson(const Failure& failure, const std::string& path = "");

/// What `work` returns. Where it throws and `json` is set, the line about the failure is written first.
template <typename Work>
auto TellingInJson(bool json, const std::string& path, Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    if (json) TellInJson(CurrentFailure(), path);
    throw;
  }
}

/// What `work` returns. Where it throws, the outcome is that failure, with a line of JSON about it as its
/// text; a lack of memory is thrown on.
Outcome WithFailureJson(const std::string& path, const std::function<Outcome()>& work);

/// The file of --report. Lines are added at its end, each with one write.
class Report {
 public:
  /// Opens the report at `path`, or makes it, and locks it (flock(2)) as long as the process has it open.
  /// Throws Failure (kIo), (kReportInUse) where another process has it, and (kOutputExists) for another file.
  explicit Report(const std::string& path);
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report() { Close(); }

  /// Throws Failure (kIo). Several threads may call it at a time.
  void Add(const std::string& line);

 private:
  void Close();
  /// Leaves what is there, or a part of it. Throws as the constructor does.
  void GoOn();

  std::mutex mutex_;
  std::string path_;
  int file_ = -1;
};

}  // namespace zuna_cli
