// Directories by POSIX, names by std::filesystem.

#include "kit/path.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <string_view>

#include "platform/kit/internal/system_calls.h"

namespace kit {

namespace {

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};

using Directory = std::unique_ptr<DIR, CloseDirectory>;

constexpr const char* kNotListed = "cannot list the directory";

Directory OpenDirectory(const std::string& dir) {
  RequireWholePath(dir);
  for (;;) {
    Directory directory(::opendir(dir.c_str()));
    if (directory) return directory;
    if (errno != EINTR) ThrowIoError(dir, kNotListed, errno);
  }
}

/// The next entry, or nullptr after the last one.
const dirent* NextEntry(const Directory& directory, const std::string& dir) {
  errno = 0;
  const dirent* const entry = ::readdir(directory.get());
  if (entry == nullptr && errno != 0) ThrowIoError(dir, kNotListed, errno);
  return entry;
}

}  // namespace

// Not by std::filesystem::directory_iterator, which ends the process where it lacks memory.
std::vector<std::string> listdir(const std::string& dir) {
  const Directory directory = OpenDirectory(dir);
  std::vector<std::string> names;
  while (const dirent* entry = NextEntry(directory, dir)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

namespace path {

std::string extension(const std::string& path) { return std::filesystem::path(path).extension().string(); }

std::string Join(const std::string& dir, const std::string& name) {
  return (std::filesystem::path(dir) / name).string();
}

}  // namespace path

}  // namespace kit
