// A private folder beside outputs, in which they are made complete.

#pragma once

#include <sys/stat.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/kit/internal/target.h"

namespace kit {

/// Gives the open file `file` the permissions of `old`, which it replaces: its bits without set-user-ID,
/// set-group-ID and sticky, and its group. Where the group cannot be kept, group and others get what both of
/// them had. Throws kit::IoError about `path`. It takes no name: whoever owns the folder around a staging
/// folder may put a link to any file in the place of a name.
void GivePermissionsOf(const struct stat& old, int file, const std::string& path);

/// A name in a staging folder: "new-N" or "old-N". Needs no memory of its own.
struct StagedName {
  StagedName(const char* prefix, std::size_t number);

  std::array<char, 32> text;
};

/// A folder ".zuna-*.tmp" that only its owner can enter, in the folder of outputs. Files have their final
/// permissions before they leave it, and whatever is left in it after a crash is out of reach for others.
/// It is locked (flock(2)) as long as the process lives, which tells it from one that was left behind.
class StagingFolder {
 public:
  /// Makes it in `parent`. Throws kit::IoError about `path`.
  StagingFolder(std::shared_ptr<const Folder> parent, const std::string& path);
  StagingFolder(const StagingFolder&) = delete;
  StagingFolder& operator=(const StagingFolder&) = delete;
  ~StagingFolder() { Remove(); }

  int number() const { return descriptor_.number(); }
  /// Its name in its parent.
  const std::string& name() const { return name_; }

  /// Creates the file called `name`, with the permissions `mode` as far as the umask allows. Throws
  /// kit::IoError about `path`.
  FileDescriptor Create(const StagedName& name, unsigned mode, const std::string& path) const;

  /// Moves the file called `name` to `target`, in the place of what is there. Returns 0, or -1 and errno.
  int MoveReplacing(const StagedName& name, const Target& target) const;

  /// Gives the file called `name` the name `target` unless that exists: then errno is EEXIST. The file may
  /// keep its old name beside it. Returns 0, or -1 and errno.
  int MoveWithoutReplacing(const StagedName& name, const Target& target) const;

  /// Removes the folder, whose files are gone. Returns 0, or a value of errno.
  int Remove();

 private:
  /// Makes a folder of a new name, and opens and locks it. Returns 0, or a value of errno: EEXIST where
  /// another name may help.
  int Make(const std::string& path);
  /// Locks the folder. Returns 0, or a value of errno: EEXIST or ENOENT where another process has taken it
  /// for one that was left behind.
  int Lock() const;

  std::shared_ptr<const Folder> parent_;
  std::string name_;
  FileDescriptor descriptor_;
  bool exists_ = false;
};

}  // namespace kit
