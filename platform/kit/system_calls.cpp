// System calls that are made until all is done, and the message of one that failed: what failed, the reason,
// and what to do about it.

#include "platform/kit/internal/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "kit/file.h"
#include "kit/format.h"

namespace kit {

namespace {

constexpr std::size_t kLargestWrite = std::size_t{1} << 30;  // some systems refuse 2 GiB

const char* Remedy(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
      return "check the path";
    case EISDIR:
      return "give the path of a file";
    case EACCES:
    case EPERM:
    case EROFS:
      return "check the permissions, or give another path";
    case EMFILE:
    case ENFILE:
      return "close other files or programs, or raise the limit of open files";
    case ENOMEM:
      return "close other programs";
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return "free some space, or choose another folder";
    default:
      return "check the disk, or choose another folder";
  }
}

}  // namespace

void ThrowIoError(const std::string& path, std::string_view what, int error) {
  throw kit::FileIoError(path, std::string(what) + ": " + std::generic_category().message(error),
                         Remedy(error), error);
}

void RequireWholePath(const std::string& path) {
  if (path.empty()) {
    throw kit::FileIoError("\"\"", "an empty path names no file or folder", "give a path", ENOENT);
  }
  if (path.find('\0') == std::string::npos) return;
  std::string shown;
  for (const char character : path) shown += character == '\0' ? "\\0" : std::string(1, character);
  throw kit::FileIoError(shown, "no path holds a NUL byte", "give the path of a file");
}

FileIoError::FileIoError(const std::string& path, const std::string& problem, const std::string& remedy,
                         int error)
    : IoError(path + ": " + problem + "; " + remedy),
      parts_(std::make_shared<const Parts>(Parts{path, problem, remedy})),
      error_(error) {}

void WriteAll(int file, std::span<const std::uint8_t> bytes, const std::string& path) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const auto rest = bytes.subspan(written, std::min(bytes.size() - written, kLargestWrite));
    const ssize_t count = RetryInterrupted([&] { return ::write(file, rest.data(), rest.size()); });
    if (count < 0) {
      const int error = errno;
      if (written == 0) ThrowIoError(path, "cannot be written", error);
      ThrowIoError(path, kit::format("cannot be written (after %zu of %zu bytes)", written, bytes.size()),
                   error);
    }
    written += static_cast<std::size_t>(count);
  }
}

void FlushAndClose(FileDescriptor& file, const std::string& path) {
  if (RetryInterrupted([&] { return ::fsync(file.number()); }) != 0 || !file.Close()) {
    ThrowIoError(path, "cannot be written (flushing it to the disk)", errno);
  }
}

}  // namespace kit
