// Where a command puts its result.
#include "cli/commands/output.h"

#include <unistd.h>

#include <filesystem>

#include "cli/terminal/failure.h"
#include "cli/terminal/signals.h"
#include "cli/terminal/standard_streams.h"
#include "kit/file.h"

namespace zuna_cli {

namespace {

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code ignored;  // An input that is not there is reported when it is read.
  return a == b || std::filesystem::equivalent(a, b, ignored);
}

}  // namespace

void Output::Check(const std::vector<std::string>& inputs) const {
  if (path.empty()) {
    throw Failure(ExitCode::kUsage, "command line", "the path of the output is empty; give a file");
  }
  if (path == kStandardStream) {
    if (isatty(STDOUT_FILENO) == 0) return;
    throw Failure(ExitCode::kRefused, "standard output",
                  "is a terminal, and the result is binary; give -o FILE or a pipe");
  }
  for (const std::string& input : inputs) {
    if (input != kStandardStream && IsSameFile(path, input)) {
      throw Failure(ExitCode::kRefused, path, "is an input as well; give another output");
    }
  }
  std::error_code ignored;  // What cannot be looked at cannot be written, which says so better.
  const auto status = std::filesystem::status(path, ignored);
  if (!std::filesystem::exists(status)) return;
  if (!std::filesystem::is_regular_file(status)) {
    throw Failure(ExitCode::kRefused, path, "is not a regular file; give another output, or - for a pipe");
  }
  if (!force)
    throw Failure(ExitCode::kRefused, path, "exists; give --force to replace it, or another output");
}

void Output::Write(zuna_sec::TwoFishCipherStream& stream) const {
  if (path == kStandardStream) {
    const auto bytes = stream.GetEncryptedBytes();
    return WriteStandardOutput({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }
  const HoldSignals no_leftovers;
  stream.WriteToFile(path);
}

void Output::WritePlaintext(std::string_view bytes) const {
  if (path == kStandardStream) return WriteStandardOutput(bytes);
  WritePlainFile(path, bytes, kit::kOwnerOnly);
}

void WritePlainFile(const std::string& path, std::string_view bytes, unsigned new_mode) {
  const HoldSignals no_leftovers;
  kit::WriteFileAtomically(path, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()},
                           new_mode);
}

}  // namespace zuna_cli
