#include "cli/base/output.h"

#include <unistd.h>

#include <filesystem>

#include "cli/base/errors.h"
#include "cli/base/file_io.h"
#include "cli/base/interrupt.h"

namespace zuna_cli {

namespace {

constexpr unsigned kOwnerOnly = 0600;

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
  OnFile(OutputName(path), [&] {
    if (path == kStandardStream) {
      const auto bytes = stream.GetEncryptedBytes();
      WriteStandardOutput({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } else {
      const HoldSignals no_leftovers;
      stream.WriteToFile(path);
    }
  });
}

void Output::WritePlaintext(std::string_view bytes) const {
  if (path == kStandardStream) return WriteStandardOutput(bytes);
  WriteFileAtomically(path, bytes, kOwnerOnly);
}

}  // namespace zuna_cli
