// Where a command puts its result.
#include "cli/shared/output.h"

#include <unistd.h>

#include <filesystem>

#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/document/open.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

Destination::Destination(const Output& output, const std::vector<std::string>& inputs)
    : path_(output.path), keep_old_(output.keep_old), files_(output.force) {
  if (path_ != kStandardStream) {
    files_.Add(path_, inputs);
  } else if (isatty(STDOUT_FILENO) != 0) {
    throw Failure(ErrorCode::kOutputIsTerminal, name(), "is a terminal, and the result is binary",
                  "give -o FILE or a pipe");
  }
}

std::string Destination::name() const { return OutputName(path_); }

void Destination::WriteEncrypted(zuna_sec::TwoFishCipherStream& stream) {
  Write(EncryptedBytes(stream, name()));
}

void Destination::Write(std::span<const std::uint8_t> bytes) {
  if (path_ == kStandardStream) {
    return WriteStandardOutput({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }
  files_.Write(0, bytes, kit::kOwnerOnly);
  if (!keep_old_) return files_.Commit();
  const std::string kept = kit::BackUp(path_, zuna_toolkit::kMaxFileSize);
  try {
    files_.Commit();
  } catch (...) {
    std::error_code ignored;  // Where the old file has its place yet, it needs no second name.
    if (std::filesystem::equivalent(path_, kept, ignored)) std::filesystem::remove(kept, ignored);
    throw;
  }
}

std::vector<std::uint8_t> EncryptedBytes(zuna_sec::TwoFishCipherStream& stream, const std::string& name) try {
  return stream.GetEncryptedBytes();
} catch (const zuna_sec::CipherError& error) {
  throw Failure(zuna_toolkit::CodeOf(error), name, error.problem(), error.remedy());
}

}  // namespace zuna_cli
