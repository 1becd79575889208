#pragma once

#include <cstddef>
#include <string>

#include "platform/security/memory_block.h"

namespace zuna_security {

/// The bytes of a file, at the beginning of a block that may be larger.
struct FileBytes {
  MemoryBlock block;
  std::size_t size = 0;
};

/// Reads the whole file at `path`, which may also be a pipe or a device. Throws kit::IoError where it cannot
/// be opened or read, zuna_sec::TooLargeError where there are more than `max_size` bytes.
FileBytes ReadWholeFile(const std::string& path, std::size_t max_size);

}  // namespace zuna_security
