// What tells a file from all others.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <utility>

namespace zuna_cli {

/// Device and inode of a file that exists.
using FileId = std::pair<dev_t, ino_t>;

/// Those of the file that `path` leads to; nothing where it cannot be looked at.
inline std::optional<FileId> IdOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return FileId(status.st_dev, status.st_ino);
}

}  // namespace zuna_cli
