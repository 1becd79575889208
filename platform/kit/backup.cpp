// A second name for a file before another one takes its place.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "kit/error.h"
#include "kit/file.h"
#include "platform/kit/internal/system_calls.h"
#include "platform/kit/internal/target.h"

namespace kit {

namespace {

constexpr const char* kNoBackup = "cannot be kept beside the new file";
constexpr unsigned kMostBackups = 99999;

/// Whether both are names of one file.
bool IsSameFile(const std::string& a, const std::string& b) {
  struct stat first {};
  struct stat second {};
  return ::lstat(a.c_str(), &first) == 0 && ::lstat(b.c_str(), &second) == 0 && IdOf(first) == IdOf(second);
}

/// Some file systems have no hard links, and some files must get none. Where something else is wrong, the
/// copy fails as well and says so.
void Copy(const std::string& path, const std::string& copy, std::size_t limit) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) ThrowIoError(path, kNoBackup, errno);
  const FileBytes file = ReadWholeFile(path, limit);
  OutputFiles output(Existing::kRefuse);
  output.Add(copy);
  output.Write(0, file.bytes(), status.st_mode & kPermissions);
  output.Commit();
}

}  // namespace

std::string BackUp(const std::string& path, std::size_t limit) {
  RequireWholePath(path);
  for (unsigned number = 1; number <= kMostBackups; ++number) {
    std::string name = path + ".~" + std::to_string(number) + '~';
    if (::linkat(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), 0) == 0) return name;
    if (errno == EEXIST) {
      if (IsSameFile(path, name)) return name;  // A process that was killed has kept it already.
      continue;
    }
    try {
      Copy(path, name, limit);
      return name;
    } catch (const FileExistsError&) {
      continue;
    }
  }
  throw FileIoError(path,
                    std::string(kNoBackup) + ": " + std::to_string(kMostBackups) + " older ones are there",
                    "remove some of them");
}

}  // namespace kit
