// The files that a command writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/terminal/signals.h"
#include "kit/file.h"

namespace zuna_cli {

/// Throws Failure (kRefused) where at the path of an output a file is that may not be replaced, is no regular
/// file, or is one of `inputs`.
void RequirePlace(const std::string& path, const std::vector<std::string>& inputs, bool force);

/// Files that take their places together. The places are found before the work of the command: what others
/// put there meanwhile is not followed, and only replaced where that was asked for.
///
/// Signals that would end the program wait from the first write on, and are answered between two files: no
/// file takes its place then, and nothing is left behind.
class OutputSet {
 public:
  /// No files yet. They replace what is in their places where `force` says so.
  explicit OutputSet(bool force);

  /// Adds the file at `path`. Throws what RequirePlace() throws, and kit::IoError.
  void Add(const std::string& path, const std::vector<std::string>& inputs);

  std::size_t size() const { return files_.size(); }

  /// Writes the file that was added as number `file` (from 0), outside its place; `new_mode` is for a new
  /// file. Throws kit::IoError, and Failure (kInterrupted).
  void Write(std::size_t file, std::span<const std::uint8_t> bytes, unsigned new_mode);

  /// Puts all files in their places. Throws as Write() does, and kit::FileExistsError.
  void Commit();

 private:
  void EndIfInterrupted() const;

  bool force_;
  std::optional<HoldSignals> held_;  // before files_, which removes what is left while signals wait
  kit::OutputFiles files_;
};

}  // namespace zuna_cli
