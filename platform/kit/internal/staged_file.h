// One output from its making to its place.

#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <optional>
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

  /// The file in its place, where it may be replaced.
  std::optional<struct stat> Inspect() const;

  /// Writes and flushes it in `staging`, which lives as long as this object is used.
  void Write(const StagingFolder& staging, std::span<const std::uint8_t> bytes, unsigned new_mode);

  /// Moves it to its place; the file that it replaces stays in the staging folder where `keep` says so.
  void Place(bool keep);

  /// Makes the place what it was before Place(). Does nothing to a file that has not got its place. Throws
  /// kit::IoError where the old file cannot be put back; then it stays in the staging folder.
  void TakeBack();

  /// Removes what is in the staging folder. Returns 0, or a value of errno.
  int RemoveLeftovers();

 private:
  void PlaceNew();
  void PlaceReplacing(bool keep);
  void Keep();
  int RemoveStaged(const StagedName& name) const;

  std::string path_;
  Target target_;
  Existing existing_;
  StagedName new_name_;
  StagedName old_name_;
  const StagingFolder* staging_ = nullptr;
  std::optional<struct stat> old_;  ///< the file whose permissions it has
  bool is_staged_ = false;          ///< the staging folder holds it
  bool is_placed_ = false;
  bool has_kept_ = false;  ///< the staging folder holds the file that was replaced
};

}  // namespace kit
