// Writes one file: in one step, or directly where it is a device or a pipe.

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "kit/file.h"
#include "platform/kit/internal/system_calls.h"

namespace kit {

namespace {

/// Writes to the device or pipe at `path`. Returns false where a regular file or nothing is there.
bool WroteToDevice(const std::string& path, std::span<const std::uint8_t> bytes) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return false;
  FileDescriptor file(
      RetryInterrupted([&] { return ::open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC); }));
  if (!file.is_open()) ThrowIoError(path, "cannot be written", errno);
  if (::fstat(file.number(), &status) != 0) ThrowIoError(path, "cannot be written", errno);
  if (S_ISREG(status.st_mode)) return false;  // It has been put there meanwhile.
  WriteAll(file.number(), bytes, path);
  if (!file.Close()) ThrowIoError(path, "cannot be written", errno);
  return true;
}

}  // namespace

void WriteFileAtomically(const std::string& path, std::span<const std::uint8_t> bytes, unsigned new_mode) {
  RequireWholePath(path);
  if (WroteToDevice(path, bytes)) return;
  OutputFiles files(Existing::kReplace);
  files.Add(path);
  files.Write(0, bytes, new_mode);
  files.Commit();
}

}  // namespace kit
