// Where a command puts its result.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

/// Where a command puts its result: the file at `path`, or standard output for "-".
struct Output {
  std::string path;
  bool force = false;  ///< replace a file that exists

  /// Throws Failure (kUsage) where the path is empty and (kRefused) where the output exists and may not be
  /// replaced, is no regular file, is one of `inputs`, or is a terminal. Called before any work is done.
  void Check(const std::vector<std::string>& inputs) const;

  /// Encrypts and writes the content of `stream`. Throws Failure or kit::IoError.
  void Write(zuna_sec::TwoFishCipherStream& stream) const;
  /// A new file is readable by its owner only. Throws Failure or kit::IoError.
  void WritePlaintext(std::string_view bytes) const;
};

/// Replaces or creates the file at `path` in one step, while signals wait; `new_mode` is for a new file.
/// Throws kit::IoError.
void WritePlainFile(const std::string& path, std::string_view bytes, unsigned new_mode);

}  // namespace zuna_cli
