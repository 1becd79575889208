// The report of a command, written line by line.
#include "cli/batch/report.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "cli/shared/json_text.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"

namespace zuna_cli {

namespace {

// No other output of the tool begins so.
constexpr std::string_view kBegin = "{\"schemaVersion\": 1, \"status\": ";
constexpr std::string_view kAborted = "\"aborted\"";

std::string_view StatusText(Status status) {
  switch (status) {
    case Status::kDone:
      return "done";
    case Status::kCurrent:
      return "current";
    case Status::kSkipped:
      return "skipped";
    case Status::kFailed:
      break;
  }
  return "failed";
}

bool HasStatus(std::string_view line, Status status) {
  return line.starts_with(std::string(kBegin) + '"' + std::string(StatusText(status)) + '"');
}

/// The end of the line before the one that ends at `end`, or of a part of it. All are offsets in bytes.
off_t LineBefore(int file, off_t end) {
  std::array<char, 4096> block{};
  while (end > 0) {
    const off_t begin = std::max<off_t>(0, end - static_cast<off_t>(block.size()));
    const ssize_t count = ::pread(file, block.data(), static_cast<std::size_t>(end - begin), begin);
    if (count < end - begin) return end;
    const std::size_t last = std::string_view(block.data(), static_cast<std::size_t>(count)).rfind('\n');
    if (last != std::string_view::npos) return begin + static_cast<off_t>(last) + 1;
    end = begin;
  }
  return 0;
}

/// The size of a report of `size` bytes without a line that was cut off when the program was killed, and
/// without the last line of a run that failed before its first input: this one has come further.
off_t WholeSize(int file, off_t size) {
  const off_t end = LineBefore(file, size);
  if (end == 0) return end;
  const off_t last = LineBefore(file, end - 1);
  std::array<char, kBegin.size() + kAborted.size()> begin{};
  const ssize_t count = ::pread(file, begin.data(), begin.size(), last);
  const bool is_aborted = count == static_cast<ssize_t>(begin.size()) &&
                          std::string_view(begin.data(), begin.size()).ends_with(kAborted);
  return is_aborted ? last : end;
}

[[noreturn]] void ThrowUnwritten(const std::string& path, int error) {
  throw Failure(zuna_toolkit::CodeOfSystemError(error), path,
                "cannot be written: " + std::generic_category().message(error),
                "check the path and whether there is space");
}

/// The system takes the lock away when the process ends, however that is. File systems without locks, and
/// those whose locks other machines do not see, let every run in.
void LockReport(int file, const std::string& path) {
  if (::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
  throw Failure(ErrorCode::kReportInUse, path, "is in use by another run",
                "wait until that run ends, or give another file to --report");
}

std::string LineJson(const ReportLine& line, std::string_view status, const Failure* failure) {
  const int code = failure == nullptr ? 0 : static_cast<int>(failure->exit_code());
  std::string json = std::string(kBegin) + '"' + std::string(status) + "\", " + PathJson("path", line.path) +
                     ", " + std::string(kDigestKey) + ": " + TextOrNull(line.digest) + ", " +
                     std::string(kOptionsKey) + ": " +
                     TextOrNull(line.options + line.loss_options + line.companion_options) + ", " +
                     PathJson(std::string(kCompanion), line.companion) + ", " +
                     std::string(kCompanionDigestKey) + ": " + TextOrNull(line.companion_digest) +
                     ", \"notes\": " + JsonStrings(line.notes) + ", " + PathJson("output", line.output) +
                     ", " + PathJson("backup", line.backup) + ", \"exitCode\": " + std::to_string(code);
  if (line.is_dry_run) json += ", " + std::string(kDryRunKey) + ": true";
  if (failure != nullptr) json += ", \"error\": " + ErrorJson(*failure);
  json +=
      ", \"losses\": [" + line.losses + "], " + std::string(kLossKindsKey) + ": [" + line.loss_kinds + "]";
  if (failure == nullptr && !line.finished.empty()) {
    json += ", " + std::string(kFinishedKey) + ": \"" + line.finished + "\", " + std::string(kWrittenKey) +
            ": \"" + line.written + '"';
  }
  return json + "}\n";
}

}  // namespace

std::string ReportJson(const ReportLine& line, Status status, const Failure* failure) {
  return LineJson(line, StatusText(status), failure);
}

std::string BegunJson(const ReportLine& line) { return LineJson(line, "begun", nullptr); }

bool IsBegun(std::string_view line) { return line.starts_with(std::string(kBegin) + "\"begun\""); }

bool IsCurrent(std::string_view line) { return HasStatus(line, Status::kCurrent); }

bool IsSkipped(std::string_view line) { return HasStatus(line, Status::kSkipped); }

bool IsFailed(std::string_view line) { return HasStatus(line, Status::kFailed); }

std::string DoneJson(std::string_view begun) {
  const std::string rest(begun.substr(begun.find(',', kBegin.size())));
  return std::string(kBegin) + '"' + std::string(StatusText(Status::kDone)) + '"' + rest + '\n';
}

std::string AbortedJson(const Failure& failure, bool is_dry_run) {
  ReportLine line;
  line.is_dry_run = is_dry_run;
  return LineJson(line, "aborted", &failure);
}

std::string FailureMembersJson(const Failure& failure) {
  return "\"exitCode\": " + std::to_string(static_cast<int>(failure.exit_code())) +
         ", \"error\": " + ErrorJson(failure);
}

std::string FailureJson(const std::string& path, const Failure& failure) {
  return "{\"schemaVersion\": 1, " + PathJson("path", path) + ", " + FailureMembersJson(failure) + "}\n";
}

void TellInJson(const Failure& failure, const std::string& path) {
  if (failure.kind() != zuna_toolkit::ErrorKind::kUsage) WriteStandardOutput(FailureJson(path, failure));
}

Outcome WithFailureJson(const std::string& path, const std::function<Outcome()>& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    Outcome outcome;
    outcome.status = Status::kFailed;
    outcome.failure = CurrentFailure();
    outcome.text = FailureJson(path, *outcome.failure);
    return outcome;
  }
}

Report::Report(const std::string& path) : path_(path) {
  constexpr mode_t kNewFileMode = 0666;
  do {
    file_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kNewFileMode);
  } while (file_ < 0 && errno == EINTR);
  if (file_ < 0) ThrowUnwritten(path, errno);
  try {
    GoOn();
  } catch (...) {
    Close();
    throw;
  }
}

void Report::GoOn() {
  struct stat status {};
  if (::fstat(file_, &status) != 0 || !S_ISREG(status.st_mode)) return;
  LockReport(file_, path_);
  if (::fstat(file_, &status) != 0 || status.st_size == 0) return;  // The run before may just have ended.
  std::array<char, kBegin.size()> begin{};
  const ssize_t size = ::pread(file_, begin.data(), begin.size(), 0);
  if (size < 0 || kBegin != std::string_view(begin.data(), static_cast<std::size_t>(size))) {
    throw Failure(ErrorCode::kOutputExists, path_, "exists and is no report",
                  "give another file to --report");
  }
  const off_t end = WholeSize(file_, status.st_size);
  if (end < status.st_size && ::ftruncate(file_, end) != 0) ThrowUnwritten(path_, errno);
}

void Report::Close() {
  if (file_ >= 0) ::close(std::exchange(file_, -1));
}

void Report::Add(const std::string& line) {
  const std::lock_guard lock(mutex_);
  const off_t before = ::lseek(file_, 0, SEEK_END);
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t count = ::write(file_, rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      const int error = errno;
      // Half a line would spoil the next one. A pipe has none to take back.
      [[maybe_unused]] const int cut = before < 0 ? 0 : ::ftruncate(file_, before);
      ThrowUnwritten(path_, error);
    }
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace zuna_cli
