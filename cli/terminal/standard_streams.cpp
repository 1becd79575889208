// Standard input and output in place of files.
#include "cli/terminal/standard_streams.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "cli/terminal/failure.h"

namespace zuna_cli {

std::string InputName(const std::string& path) { return path == kStandardStream ? "standard input" : path; }

std::string OutputName(const std::string& path) { return path == kStandardStream ? "standard output" : path; }

void WriteStandardOutput(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(STDOUT_FILENO, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EPIPE) {
      throw Failure(ExitCode::kClosedPipe, "");  // Its reader has seen enough.
    } else if (errno != EINTR) {
      throw Failure(ExitCode::kIo, "standard output",
                    "cannot be written: " + std::generic_category().message(errno) +
                        "; check where it goes and whether there is space");
    }
  }
}

}  // namespace zuna_cli
