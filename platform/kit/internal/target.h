// Where an output goes: an open folder and a name in it.

#pragma once

#include <sys/stat.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/kit/internal/system_calls.h"

namespace kit {

/// What tells a file or a folder from all others while it exists: device and inode.
using FileId = std::pair<dev_t, ino_t>;

inline FileId IdOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }

/// An open folder. Its files are named relative to it, so that nobody can exchange a part of its path.
class Folder {
 public:
  /// Opens `folder`, which is relative to the open folder `base`. Throws kit::IoError about `path`.
  Folder(int base, const std::string& folder, const std::string& path);

  int number() const { return descriptor_.number(); }
  FileId id() const { return id_; }

  /// Makes the names in it survive a power failure. Returns 0, or a value of errno. A folder that may not be
  /// read, or whose file system flushes no folders, cannot be flushed; that counts as done.
  int Flush() const;

 private:
  bool readable_ = true;
  FileDescriptor descriptor_;
  FileId id_;
};

/// The name of a file, which need not exist, without symbolic links.
struct Target {
  std::shared_ptr<const Folder> folder;
  std::string name;  ///< one component
};

/// The part of `path` before its last component, "." for none.
std::string FolderOf(const std::string& path);

/// The file that `path` leads to. `folder` is that of the path; links are followed from there, once. Throws
/// kit::IoError.
Target Resolve(std::shared_ptr<const Folder> folder, const std::string& path);

/// The regular file at `target`, or nothing where there is none. Throws kit::IoError about `path` where
/// something else is there, a symbolic link included, and where the caller may not write to the file.
std::optional<struct stat> LookForWriting(const Target& target, const std::string& path);

}  // namespace kit
