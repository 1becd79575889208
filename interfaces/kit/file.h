// Whole files. Not part of the contract with the converter.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "kit/api.h"
#include "kit/error.h"
#include "kit/memory_block.h"

namespace kit {

/// An IoError that knows its file. The functions below throw it wherever they throw an IoError.
class ZUNA_API FileIoError : public IoError {
 public:
  /// "PATH: PROBLEM; REMEDY". `error` is the value of errno that tells the reason, 0 where none does.
  FileIoError(const std::string& path, const std::string& problem, const std::string& remedy, int error = 0);

  /// The file or folder, or what messages call a descriptor.
  const std::string& path() const { return parts_->path; }
  /// What happened, with the reason that the system gave.
  const std::string& problem() const { return parts_->problem; }
  /// What the user can do.
  const std::string& remedy() const { return parts_->remedy; }
  /// A value of errno; 0 where the system gave no reason.
  int error() const { return error_; }

 private:
  struct Parts {
    std::string path;
    std::string problem;
    std::string remedy;
  };

  std::shared_ptr<const Parts> parts_;  ///< shared, so that copying cannot fail
  int error_;
};

/// A file holds more bytes than the caller takes.
class ZUNA_API FileTooLargeError : public RuntimeError {
 public:
  /// "NAME: holds more than LIMIT bytes; give another file".
  FileTooLargeError(const std::string& name, std::size_t limit);

  /// The file, or what messages call it.
  const std::string& name() const { return *name_; }
  /// The most that the caller takes, in bytes.
  std::size_t limit() const { return limit_; }

 private:
  std::shared_ptr<const std::string> name_;  ///< shared, so that copying cannot fail
  std::size_t limit_;
};

/// The bytes of a file, at the beginning of a block that may be larger.
struct FileBytes {
  MemoryBlock block;     ///< not wiped when it is destroyed
  std::size_t size = 0;  ///< how many bytes of the block are the file's

  /// The bytes of the file.
  std::span<std::uint8_t> bytes() const { return {block.data(), size}; }
};

/// Reads the whole file at `path`, which may also be a pipe or a device, into a block that was not zeroed
/// before. Throws kit::IoError where it cannot be opened or read, kit::FileTooLargeError where it holds more
/// than `limit` bytes, a regular file before a byte is read.
ZUNA_API FileBytes ReadWholeFile(const std::string& path, std::size_t limit);

/// The same from the current position of the open `descriptor`, which stays open: 0 is standard input. `name`
/// begins the messages.
ZUNA_API FileBytes ReadWholeFile(int descriptor, const std::string& name, std::size_t limit);

/// Reads the whole file at `path` as ReadWholeFile() does, where it is a regular file or a link to one.
/// Nothing for a folder, pipe, device or socket, which is not opened or, where it appears during the call,
/// not read and not waited for.
ZUNA_API std::optional<FileBytes> ReadRegularFile(const std::string& path, std::size_t limit);

/// Permissions of a file that only its owner may read and write.
inline constexpr unsigned kOwnerOnly = 0600;

/// A file that was not there has appeared while it was to be created, and is left as it is.
class ZUNA_API FileExistsError : public RuntimeError {
 public:
  /// "PATH: has appeared meanwhile and is not replaced; give another path".
  explicit FileExistsError(const std::string& path);

  /// The file.
  const std::string& path() const { return *path_; }

 private:
  std::shared_ptr<const std::string> path_;  ///< shared, so that copying cannot fail
};

/// What becomes of a file that is in the place of an output.
enum class Existing {
  kReplace,  ///< it is replaced in one step
  kRefuse,   ///< it stays, and FileExistsError is thrown
};

/// Files that take their places together: all of them, or none after a failure. A program that opens one of
/// their paths finds the old bytes or the new ones, also after a crash at any moment.
///
/// Until then the files are in a folder ".zuna-*.tmp" beside their places, which only its owner can enter.
/// They are flushed to the disk. Only a crash, or a signal that ends the process, leaves that folder behind;
/// RemoveLeftovers() removes it.
/// Two descriptors are open for each folder with outputs.
class ZUNA_API OutputFiles {
 public:
  /// No files yet.
  explicit OutputFiles(Existing existing);
  OutputFiles(const OutputFiles&) = delete;
  OutputFiles& operator=(const OutputFiles&) = delete;
  /// Removes what has not taken its place.
  ~OutputFiles();

  /// Takes `path` as the place of the next file. Symbolic links are followed now and not again: what is
  /// changed in them later has no effect. Throws kit::IoError where no regular file can be there, and
  /// FileExistsError.
  void Add(const std::string& path);

  /// How many files were added.
  std::size_t size() const;

  /// Writes the file that was added as number `file` (from 0), outside its place. A new file gets the
  /// permissions `new_mode` as far as the umask allows. One that replaces another gets that one's group and
  /// permissions, without set-user-ID, set-group-ID and sticky; where it cannot get the group, group and
  /// others get only what both of them had. Throws kit::IoError, also where the old file is write-protected.
  void Write(std::size_t file, std::span<const std::uint8_t> bytes, unsigned new_mode = kOwnerOnly);

  /// Puts all files in their places. Throws kit::IoError, also where two paths lead to one file,
  /// FileExistsError, and std::logic_error where one of the files was not written, or not completely; the old
  /// files are back in their places then. Only the message "PATH: is written, but …" means that all files
  /// are in place: the folder could not be flushed, or the private folder could not be removed. Nothing may
  /// be called after it.
  void Commit();

 private:
  class Set;
  std::unique_ptr<Set> set_;
};

/// Removes what OutputFiles of processes that were killed have left in `folder`, as far as it is the caller's
/// own: outputs that did not get their places. A private folder of a process that runs stays, and one with
/// the old file of a place. Nothing is reported: whatever cannot be removed stays.
ZUNA_API void RemoveLeftovers(const std::string& folder);

/// Gives the regular file at `path`, which is no symbolic link, the second name "PATH.~N~": N follows the
/// highest there is, unless that is a name of this file already. A process lists each folder once for it.
/// Where the file system has no hard links, it is a copy with its permissions, of at most `limit` bytes.
/// Returns the name. Throws kit::IoError, and FileTooLargeError for a copy.
ZUNA_API std::string BackUp(const std::string& path, std::size_t limit);

/// Replaces the file at `path`, or creates it, as OutputFiles does with Existing::kReplace. What is not a
/// regular file (a device, a pipe) cannot be replaced and is written to directly. Throws kit::IoError
/// "PATH: WHAT: REASON; REMEDY".
ZUNA_API void WriteFileAtomically(const std::string& path, std::span<const std::uint8_t> bytes,
                                  unsigned new_mode = kOwnerOnly);

}  // namespace kit
