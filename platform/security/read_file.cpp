#include "platform/security/read_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include "kit/format.h"
#include "platform/security/file_descriptor.h"
#include "platform/security/io_failure.h"
#include "zuna_sec/errors.h"

namespace zuna_security {

namespace {

constexpr std::size_t kFirstBlockOfPipe = std::size_t{64} << 10;
constexpr std::size_t kLargestRead = std::size_t{1} << 30;  // some systems refuse 2 GiB

[[noreturn]] void ThrowTooLarge(const std::string& path, std::size_t max_size) {
  throw zuna_sec::TooLargeError(
      kit::format("%s: holds more than %zu bytes, the most that an encrypted file can; "
                  "give another file",
                  path.c_str(), max_size));
}

/// How much memory to begin with: for a file all of it and one byte more, so that the end is seen without
/// growing.
std::size_t FirstCapacity(int file, const std::string& path, std::size_t max_size) {
  struct stat status {};
  if (::fstat(file, &status) != 0) ThrowIoError(path, "cannot be read", errno);
  if (!S_ISREG(status.st_mode)) return kFirstBlockOfPipe;
  const auto size = static_cast<std::uint64_t>(status.st_size);
  if (size > max_size) ThrowTooLarge(path, max_size);
  return static_cast<std::size_t>(size) + 1;
}

}  // namespace

FileBytes ReadWholeFile(const std::string& path, std::size_t max_size) {
  const FileDescriptor file(RetryInterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); }));
  if (!file.is_open()) ThrowIoError(path, "cannot be opened", errno);

  FileBytes bytes;
  bytes.block.Grow(FirstCapacity(file.number(), path, max_size));
  for (;;) {
    const std::size_t room = std::min(bytes.block.capacity() - bytes.size, kLargestRead);
    const ssize_t count =
        RetryInterrupted([&] { return ::read(file.number(), bytes.block.data() + bytes.size, room); });
    if (count < 0) {
      const int error = errno;
      ThrowIoError(path, kit::format("cannot be read (offset %zu)", bytes.size), error);
    }
    if (count == 0) return bytes;
    bytes.size += static_cast<std::size_t>(count);
    if (bytes.size > max_size) ThrowTooLarge(path, max_size);
    if (bytes.size == bytes.block.capacity()) {
      bytes.block.Grow(std::min(bytes.block.capacity() * 2, max_size + 1));
    }
  }
}

}  // namespace zuna_security
