// Reads whole files, pipes and devices into one block.

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include "kit/file.h"
#include "kit/format.h"
#include "platform/kit/internal/system_calls.h"

namespace kit {

namespace {

constexpr std::size_t kFirstBlockOfPipe = std::size_t{64} << 10;
constexpr std::size_t kLargestRead = std::size_t{1} << 30;  // some systems refuse 2 GiB

/// Waits for bytes of a pipe that another program, which shares it, has made non-blocking. Returns false
/// where there is nothing to wait for: files of the system that look regular may have no bytes either.
bool WaitForBytes(int file) {
  struct stat status {};
  if (::fstat(file, &status) != 0 || S_ISREG(status.st_mode)) return false;
  pollfd input{file, POLLIN, 0};
  return RetryInterrupted([&] { return ::poll(&input, 1, -1); }) == 1;
}

/// The size of the first block: for a regular file its size and one byte more, so that the end is found
/// without growing the block.
std::size_t FirstCapacity(int file, const std::string& name, std::size_t limit) {
  struct stat status {};
  if (::fstat(file, &status) != 0) ThrowIoError(name, "cannot be read", errno);
  if (!S_ISREG(status.st_mode)) return kFirstBlockOfPipe;
  const auto size = static_cast<std::uint64_t>(status.st_size);
  if (size > limit) throw FileTooLargeError(name, limit);
  return static_cast<std::size_t>(size) + 1;
}

}  // namespace

FileTooLargeError::FileTooLargeError(const std::string& name, std::size_t limit)
    : RuntimeError(kit::format("%s: holds more than %zu bytes; give another file", name.c_str(), limit)),
      name_(std::make_shared<const std::string>(name)),
      limit_(limit) {}

FileBytes ReadWholeFile(const std::string& path, std::size_t limit) {
  RequireWholePath(path);
  const FileDescriptor file(RetryInterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); }));
  if (!file.is_open()) ThrowIoError(path, "cannot be opened", errno);
  return ReadWholeFile(file.number(), path, limit);
}

std::optional<FileBytes> ReadRegularFile(const std::string& path, std::size_t limit) {
  RequireWholePath(path);
  struct stat status {};
  // To open a device may do something to it.
  if (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) return std::nullopt;
  const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  const FileDescriptor file(RetryInterrupted([&] { return ::open(path.c_str(), flags); }));
  if (!file.is_open()) ThrowIoError(path, "cannot be opened", errno);
  if (::fstat(file.number(), &status) != 0) ThrowIoError(path, "cannot be read", errno);
  if (!S_ISREG(status.st_mode)) return std::nullopt;
  return ReadWholeFile(file.number(), path, limit);
}

FileBytes ReadWholeFile(int descriptor, const std::string& name, std::size_t limit) {
  FileBytes bytes;
  bytes.block.Grow(FirstCapacity(descriptor, name, limit));
  for (;;) {
    const std::size_t room = std::min(bytes.block.capacity() - bytes.size, kLargestRead);
    const ssize_t count =
        RetryInterrupted([&] { return ::read(descriptor, bytes.block.data() + bytes.size, room); });
    if (count < 0) {
      const int error = errno;
      if (error == EAGAIN && WaitForBytes(descriptor)) continue;
      const std::string place = bytes.size == 0 ? "" : kit::format(" (offset %zu)", bytes.size);
      ThrowIoError(name, "cannot be read" + place, error);
    }
    if (count == 0) return bytes;
    bytes.size += static_cast<std::size_t>(count);
    if (bytes.size > limit) throw FileTooLargeError(name, limit);
    if (bytes.size == bytes.block.capacity()) {
      bytes.block.Grow(std::min(bytes.block.capacity() * 2, limit + 1));
    }
  }
}

}  // namespace kit
