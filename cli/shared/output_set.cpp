// The files that a command writes.
#include "cli/shared/output_set.h"

#include <filesystem>

#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

namespace {

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code ignored;  // An input that is not there is reported when it is read.
  return a == b || std::filesystem::equivalent(a, b, ignored);
}

/// Throws Failure where a file exists at `path` that may not be replaced.
void RequireReplaceable(const std::string& path, bool force) {
  std::error_code ignored;  // What cannot be looked at cannot be written, which says so better.
  const auto status = std::filesystem::status(path, ignored);
  if (!std::filesystem::exists(status)) return;
  if (!std::filesystem::is_regular_file(status)) {
    throw Failure(ErrorCode::kOutputIsNoFile, path, "is not a regular file",
                  "give another output, or - for a pipe");
  }
  if (!force)
    throw Failure(ErrorCode::kOutputExists, path, "exists", "give --force to replace it, or another output");
}

}  // namespace

void RequirePlace(const std::string& path, const std::vector<std::string>& inputs, bool force) {
  for (const std::string& input : inputs) {
    if (input != kStandardStream && IsSameFile(path, input)) {
      throw Failure(ErrorCode::kOutputIsInput, path, "is an input as well", "give another output");
    }
  }
  RequireReplaceable(path, force);
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
