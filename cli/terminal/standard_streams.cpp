// Standard input and output in place of files; messages on standard error.
#include "cli/terminal/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "cli/terminal/text.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

constexpr const char* kRed = "\033[31m";
constexpr const char* kPlain = "\033[0m";

bool Colourful() {
  const char* no_color = std::getenv("NO_COLOR");  // https://no-color.org
  return isatty(STDERR_FILENO) != 0 && (no_color == nullptr || *no_color == '\0');
}

/// Whether a write that failed may be tried again. Waits for room where another program that shares the pipe
/// has made it non-blocking.
bool MayWriteAgain(int file) {
  if (errno != EAGAIN) return errno == EINTR;
  pollfd output{file, POLLOUT, 0};
  return poll(&output, 1, -1) == 1 || errno == EINTR;
}

/// Whether the explanation of its code says more than a message of this kind.
bool IsExplained(zuna_toolkit::ErrorKind kind) {
  using zuna_toolkit::ErrorKind;
  return kind != ErrorKind::kUsage && kind != ErrorKind::kInternal && kind != ErrorKind::kInterrupted;
}

std::string MessageOf(const Failure& failure) {
  return IsExplained(failure.kind()) ? zuna_toolkit::WithCode(failure.what(), CodeText(failure.code()))
                                     : failure.what();
}

}  // namespace

bool OccupyStandardDescriptors() {
  for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
    if (fcntl(number, F_GETFD) != -1 || errno != EBADF) continue;
    // The lowest free number is this one: those below it are open by now.
    const int direction = number == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    int opened = open("/dev/null", direction);
    while (opened == -1 && errno == EINTR) opened = open("/dev/null", direction);
    if (opened == -1) return false;
    if (opened > number) close(opened);  // It was open after all.
  }
  return true;
}

std::string InputName(const std::string& path) { return path == kStandardStream ? "standard input" : path; }

std::string OutputName(const std::string& path) { return path == kStandardStream ? "standard output" : path; }

void WriteStandardOutput(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(STDOUT_FILENO, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EPIPE) {
      throw Failure(ErrorCode::kClosedPipe, "standard output", "output pipe closed", "");
    } else if (!MayWriteAgain(STDOUT_FILENO)) {
      throw Failure(zuna_toolkit::CodeOfSystemError(errno), "standard output",
                    "cannot be written: " + std::generic_category().message(errno),
                    "check where it goes and whether there is space");
    }
  }
}

void PrintError(const Failure& failure) {
  if (failure.code() == ErrorCode::kClosedPipe) return;  // the reader has stopped on purpose
  const bool colour = Colourful();
  PrintLine(std::string(colour ? kRed : "") + "zuna-convert:" + (colour ? kPlain : "") + ' ' +
            Printable(MessageOf(failure)) + '\n');
}

std::string NoteLine(const std::string& name, const std::string& text) {
  return "zuna-convert: " + Printable(name + ": " + text) + '\n';
}

void PrintLine(std::string_view line) {
  while (!line.empty()) {
    const ssize_t count = write(STDERR_FILENO, line.data(), line.size());
    if (count < 0 && !MayWriteAgain(STDERR_FILENO)) return;
    if (count > 0) line.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace zuna_cli
