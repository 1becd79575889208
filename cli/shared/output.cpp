// Where a command puts its result.
#include "cli/shared/output.h"

#include <unistd.h>

#include <algorithm>

#include "cli/shared/file_id.h"
#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "kit/file.h"
#include "toolkit/document/open.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

bool Holds(const std::string& path, std::span<const std::uint8_t> bytes) {
  const auto content = kit::ReadRegularFile(path, zuna_toolkit::kMaxFileSize);
  return content && std::equal(content->bytes().begin(), content->bytes().end(), bytes.begin(), bytes.end());
}

Destination::Destination(const Output& output, const std::vector<std::string>& inputs)
    : path_(output.path), keep_old_(output.keep_old), files_(output.force) {
  if (path_ != kStandardStream) {
    files_.Add(path_, inputs);
  } else if (!output.is_text && isatty(STDOUT_FILENO) != 0) {
    throw Failure(ErrorCode::kOutputIsTerminal, name(), "is a terminal, and the result is binary",
                  "give -o FILE or a pipe");
  }
}

Destination::~Destination() {
  if (!kept_.empty() && old_ && IdOf(path_) == old_) ::unlink(kept_.c_str());
}

const std::string& Destination::KeepOld() {
  if (!keep_old_) return kept_;
  old_ = IdOf(path_);
  kept_ = kit::BackUp(path_, zuna_toolkit::kMaxFileSize);
  return kept_;
}

std::string Destination::name() const { return OutputName(path_); }

void Destination::WriteEncrypted(zuna_sec::TwoFishCipherStream& stream) {
  Write(EncryptedBytes(stream, name()));
}

void Destination::Write(std::span<const std::uint8_t> bytes, const std::function<void()>& check) {
  if (path_ == kStandardStream) {
    return WriteStandardOutput({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }
  files_.Write(0, bytes, kit::kOwnerOnly);
  if (check) check();
  files_.Commit();
  kept_.clear();  // It stays, whatever file has the place now.
}

void Destination::WriteJson(std::string_view text) {
  const bool is_shown = path_ == kStandardStream && isatty(STDOUT_FILENO) != 0;
  const std::string shown = is_shown ? PrintableJson(text) : "";
  if (is_shown) text = shown;
  Write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

std::vector<std::uint8_t> EncryptedBytes(zuna_sec::TwoFishCipherStream& stream, const std::string& name) try {
  return stream.GetEncryptedBytes();
} catch (const zuna_sec::CipherError& error) {
  throw Failure(zuna_toolkit::CodeOf(error), name, error.problem(), error.remedy());
}

}  // namespace zuna_cli
