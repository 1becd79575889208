// One output from its making to its place.

#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>

#include "kit/file.h"
#include "platform/kit/internal/staging_folder.h"
#include "platform/kit/internal/target.h"

namespace kit {

/// An output. Its functions are called in the order in which they stand here, and throw as those of
/// OutputFiles.
class StagedFile {
 public:
  /// The output number `number` of a set, which messages call `path`.
  StagedFile(std::string path, Target target, std::size_t number, Existing existing);

  const std::string& path() const { return path_; }
  const Target& target() const { return target_; }
  /// Whether all its bytes are on the disk.
  bool is_complete() const { return is_complete_; }
  /// What tells it from other files, once it is written.
  FileId id() const { return id_; }

  /// The file in its place, where it may be replaced.
  std::optional<struct stat> Inspect() const;

  /// Writes and flushes it in `staging`, which lives as long as this object is used.
  void Write(const StagingFolder& staging, std::span<const std::uint8_t> bytes, unsigned new_mode);

  /// Moves it to its place, which is not that of one of the `others`. The file that it replaces stays in the
  /// staging folder where `keep` says so.
  void Place(bool keep, const std::set<FileId>& others);

  /// Makes the place what it was before Place(). Does nothing where the file has not got its place, or has
  /// been replaced since. Throws kit::IoError where the old file cannot be put back; then it stays in the
  /// staging folder.
  void TakeBack();

  /// Removes what is in the staging folder. Returns 0, or a value of errno.
  int RemoveLeftovers();

 private:
  void PlaceNew(const std::set<FileId>& others);
  void PlaceReplacing(bool keep, const std::set<FileId>& others);
  /// Opens the file in the staging folder again. Throws kit::IoError where another one has its name.
  FileDescriptor Reopen() const;
  void Keep(const struct stat& old);
  void KeepCopy(const struct stat& old);
  /// Nothing, and errno, where there is none.
  std::optional<FileId> FileInPlace() const;
  void RequireNoneOf(const std::set<FileId>& others) const;
  int RemoveStaged(const StagedName& name) const;

  std::string path_;
  Target target_;
  Existing existing_;
  StagedName new_name_;
  StagedName old_name_;
  const StagingFolder* staging_ = nullptr;
  std::optional<struct stat> old_;  ///< the file whose permissions it has
  FileId id_;
  bool is_staged_ = false;  ///< the staging folder holds it
  bool is_complete_ = false;
  bool is_placed_ = false;
  bool has_kept_ = false;  ///< the staging folder holds the file that was replaced
};

}  // namespace kit
