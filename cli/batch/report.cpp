// The report of a command: written line by line, and searched for finished work.
#include "cli/batch/report.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>

#include "cli/shared/input.h"
#include "cli/shared/json_text.h"
#include "cli/terminal/text.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kMarkKey = "\"finished\"";
constexpr std::size_t kMarkSize = 64;                     // digits
constexpr std::size_t kMaxReport = std::size_t{1} << 32;  // bytes

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

/// "null" for an empty text.
std::string TextOrNull(const std::string& text) { return text.empty() ? "null" : JsonString(text); }

[[noreturn]] void ThrowUnwritten(const std::string& path, int error) {
  throw Failure(ErrorCode::kIo, path, "cannot be written: " + std::generic_category().message(error),
                "check the path and whether there is space");
}

/// The value of the key at `position` in a line, where it is a mark.
std::string_view MarkAt(std::string_view line, std::size_t position) {
  line.remove_prefix(position + kMarkKey.size());
  const std::size_t begin = line.find_first_not_of(" :\"");
  if (begin == std::string_view::npos) return {};
  line.remove_prefix(begin);
  const bool is_whole = line.size() > kMarkSize && line[kMarkSize] == '"';
  return is_whole ? line.substr(0, kMarkSize) : std::string_view();
}

}  // namespace

std::string ReportJson(const ReportLine& line, Status status, const Failure* failure) {
  const int code = failure == nullptr ? 0 : static_cast<int>(failure->exit_code());
  std::string json =
      "{\"schemaVersion\": 1, \"path\": " + JsonString(line.path) +
      ", \"digest\": " + TextOrNull(line.digest) + ", \"options\": " + JsonString(line.options) +
      ", \"companion\": " + TextOrNull(line.companion) + ", \"output\": " + TextOrNull(line.output) +
      ", \"status\": \"" + std::string(StatusText(status)) + "\", \"exitCode\": " + std::to_string(code);
  if (failure != nullptr) json += ", \"error\": " + FailureJson(*failure);
  json += ", \"losses\": [" + line.losses + "]";
  if (failure == nullptr && !line.finished.empty()) {
    json += ", " + std::string(kMarkKey) + ": \"" + line.finished + '"';
  }
  return json + "}\n";
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
    outcome.text = "{\"schemaVersion\": 1, \"path\": " + JsonString(path) +
                   ", \"error\": " + FailureJson(*outcome.failure) + "}\n";
    return outcome;
  }
}

Report::Report(const std::string& path) : path_(path) {
  constexpr mode_t kNewFileMode = 0666;
  do {
    file_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kNewFileMode);
  } while (file_ < 0 && errno == EINTR);
  if (file_ < 0) ThrowUnwritten(path, errno);
  struct stat status {};
  char last = '\n';
  const bool has_end = ::fstat(file_, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0 &&
                       ::pread(file_, &last, 1, status.st_size - 1) == 1;
  if (has_end && last != '\n') Add("\n");  // The line before was cut off when the program was killed.
}

Report::~Report() {
  if (file_ >= 0) ::close(file_);
}

void Report::Add(const std::string& line) {
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t count = ::write(file_, rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) ThrowUnwritten(path_, errno);
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::set<std::string, std::less<>> FinishedMarks(const std::string& path) {
  std::set<std::string, std::less<>> marks;
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return marks;
  const std::vector<std::uint8_t> bytes = ReadInput(path, kMaxReport);
  const std::string_view text = zuna_toolkit::AsText(bytes);
  // A key is followed by a quotation mark that no text of JSON has inside: there it would be escaped.
  for (std::size_t at = text.find(kMarkKey); at != std::string_view::npos; at = text.find(kMarkKey, at + 1)) {
    const std::string_view mark = MarkAt(text, at);
    if (!mark.empty()) marks.emplace(mark);
  }
  return marks;
}

}  // namespace zuna_cli
