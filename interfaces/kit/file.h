// Whole files. Not part of the contract with the converter.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "kit/api.h"
#include "kit/error.h"
#include "kit/memory_block.h"

namespace kit {

/// A file holds more bytes than the caller takes.
class ZUNA_API FileTooLargeError : public RuntimeError {
 public:
  /// "NAME: holds more than LIMIT bytes; give another file".
  FileTooLargeError(const std::string& name, std::size_t limit);

  /// The most that the caller takes, in bytes.
  std::size_t limit() const { return limit_; }

 private:
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

/// Permissions of a file that only its owner may read and write.
inline constexpr unsigned kOwnerOnly = 0600;

/// Replaces the file at `path`, or creates it, in one step: a program that opens the path finds the old bytes
/// or the new ones, also after a crash at any moment. A new file gets the permissions `new_mode` as far as
/// the umask allows, a replaced one keeps its own; of a symbolic link, what it points to is replaced. What is
/// not a regular file (a device, a pipe) cannot be replaced and is written to directly.
///
/// Throws kit::IoError "PATH: WHAT: REASON; REMEDY"; an old file is untouched then, and no other file is left
/// behind. A signal that ends the process may leave a temporary file ".zuna-*.tmp" beside the target.
ZUNA_API void WriteFileAtomically(const std::string& path, std::span<const std::uint8_t> bytes,
                                  unsigned new_mode = kOwnerOnly);

}  // namespace kit
