// A second name for a file before another one takes its place.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <map>
#include <mutex>
#include <string>

#include "kit/error.h"
#include "kit/file.h"
#include "kit/path.h"
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

/// The highest number of the backups of each file, by the name of the file; 0 for none.
using Newest = std::map<std::string, std::atomic<unsigned>>;

/// Takes the number of "FILE.~N~"; other names are passed over.
void AddBackup(const std::string& name, Newest& newest) {
  constexpr std::size_t kShortest = 4;  // bytes of ".~1~"
  const std::size_t mark = name.rfind(".~");
  if (mark == std::string::npos || name.size() < mark + kShortest || name.back() != '~') return;
  const char* const end = name.data() + name.size() - 1;
  unsigned number = 0;
  const auto [stop, error] = std::from_chars(name.data() + mark + 2, end, number);
  if (error != std::errc() || stop != end || number > kMostBackups) return;
  std::atomic<unsigned>& highest = newest[name.substr(0, mark)];
  highest = std::max(highest.load(), number);
}

/// The backups in `folder`; none where it cannot be listed.
Newest BackupsIn(const std::string& folder) try {
  Newest newest;
  for (const std::string& name : listdir(folder)) AddBackup(name, newest);
  return newest;
} catch (const IoError&) {
  return {};
}

/// The highest number of the backups of `path`. A folder is listed once in a process: otherwise a run that
/// replaces all files of a folder would list it for each of them.
std::atomic<unsigned>& NewestOf(const std::string& path) {
  static std::mutex mutex;
  static std::map<std::string, Newest> folders;
  const std::string folder = FolderOf(path);
  const std::lock_guard lock(mutex);
  auto known = folders.find(folder);
  if (known == folders.end()) known = folders.emplace(folder, BackupsIn(folder)).first;
  return known->second[path.substr(path.rfind('/') + 1)];
}

/// Whether `name` is a second name or a copy of the file at `path` now. False where another file has it.
bool TakeName(const std::string& path, const std::string& name, std::size_t limit) try {
  if (::linkat(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), 0) == 0) return true;
  if (errno == EEXIST) return IsSameFile(path, name);  // A process that was killed has kept it already.
  Copy(path, name, limit);
  return true;
} catch (const FileExistsError&) {
  return false;
}

}  // namespace

std::string BackUp(const std::string& path, std::size_t limit) {
  RequireWholePath(path);
  std::atomic<unsigned>& newest = NewestOf(path);
  for (unsigned number = std::max(newest.load(), 1U); number <= kMostBackups; ++number) {
    std::string name = path + ".~" + std::to_string(number) + '~';
    if (!TakeName(path, name, limit)) continue;
    newest = number;
    return name;
  }
  throw FileIoError(path,
                    std::string(kNoBackup) + ": the number " + std::to_string(kMostBackups) + " is taken",
                    "move its backups to another folder");
}

}  // namespace kit
