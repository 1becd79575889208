// The files that a command writes.
#include "cli/shared/output_set.h"

#include <sys/stat.h>

#include <algorithm>

#include "cli/shared/file_id.h"
#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

namespace {

bool IsInput(const std::string& path, const std::optional<FileId>& id,
             const std::vector<std::string>& inputs) {
  return std::any_of(inputs.begin(), inputs.end(), [&](const std::string& input) {
    if (input == kStandardStream) return false;
    return path == input || (id && IdOf(input) == id);  // An input that is not there is told when it is read.
  });
}

}  // namespace

void RequirePlace(const std::string& path, const std::vector<std::string>& inputs, bool force) {
  struct stat status {};
  // What cannot be looked at cannot be written, which says so better.
  const bool exists = ::stat(path.c_str(), &status) == 0;
  const auto id = exists ? std::optional(FileId(status.st_dev, status.st_ino)) : std::nullopt;
  if (IsInput(path, id, inputs)) {
    throw Failure(ErrorCode::kOutputIsInput, path, "is an input as well", "give another output");
  }
  if (exists && !S_ISREG(status.st_mode)) {
    throw Failure(ErrorCode::kOutputIsNoFile, path, "is not a regular file",
                  "give another output, or - for a pipe");
  }
  if (exists && !force) {
    throw Failure(ErrorCode::kOutputExists, path, "exists", "give --force to replace it, or another output");
  }
}

OutputSet::OutputSet(bool force)
    : force_(force), files_(force ? kit::Existing::kReplace : kit::Existing::kRefuse) {}

void OutputSet::Add(const std::string& path, const std::vector<std::string>& inputs) {
  RequirePlace(path, inputs, force_);
  files_.Add(path);
}

void OutputSet::Write(std::size_t file, std::span<const std::uint8_t> bytes, unsigned new_mode) {
  if (!held_) held_.emplace();
  EndIfInterrupted();
  files_.Write(file, bytes, new_mode);
}

void OutputSet::Commit() {
  EndIfInterrupted();
  files_.Commit();
  NoteOutput(true);
}

/// The signal itself ends the program, when this object has removed what is left and lets it through.
void OutputSet::EndIfInterrupted() const {
  if (held_ && held_->IsPending()) throw Failure(ErrorCode::kInterrupted, "", "interrupted", "");
}

}  // namespace zuna_cli
