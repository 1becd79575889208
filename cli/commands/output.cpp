// Where a command puts its result.
#include "cli/commands/output.h"

#include <unistd.h>

#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

Destination::Destination(const Output& output, const std::vector<std::string>& inputs)
    : path_(output.path), files_(output.force) {
  if (path_ != kStandardStream) {
    files_.Add(path_, inputs);
  } else if (isatty(STDOUT_FILENO) != 0) {
    throw Failure(ErrorCode::kOutputIsTerminal, name(), "is a terminal, and the result is binary",
                  "give -o FILE or a pipe");
  }
}

std::string Destination::name() const { return OutputName(path_); }

void Destination::WriteEncrypted(zuna_sec::TwoFishCipherStream& stream) try {
  Write(stream.GetEncryptedBytes());
} catch (const zuna_sec::CipherError& error) {
  throw Failure(zuna_toolkit::CodeOf(error), name(), error.problem(), error.remedy());
}

void Destination::Write(std::span<const std::uint8_t> bytes) {
  if (path_ == kStandardStream) {
    return WriteStandardOutput({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }
  files_.Write(0, bytes, kit::kOwnerOnly);
  files_.Commit();
}

}  // namespace zuna_cli
