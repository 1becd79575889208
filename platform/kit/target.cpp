// Where an output goes: follows symbolic links once, through open folders.

#include "platform/kit/internal/target.h"

#include <fcntl.h>

#include <array>
#include <climits>
#include <filesystem>
#include <utility>

#include "kit/file.h"

namespace kit {

namespace {

constexpr int kMostLinks = 40;
constexpr const char* kNotWritten = "cannot be written";
constexpr const char* kNoFolder = "cannot be written (opening its folder)";

#if defined(O_SEARCH)
constexpr int kSearchOnly = O_SEARCH;
#elif defined(O_PATH)
constexpr int kSearchOnly = O_PATH;
#else
constexpr int kSearchOnly = O_RDONLY;
#endif

int OpenFolder(int base, const std::string& folder, int access) {
  return RetryInterrupted([&] { return ::openat(base, folder.c_str(), access | O_DIRECTORY | O_CLOEXEC); });
}

/// What the symbolic link at `target` holds; nothing where there is no link.
std::optional<std::string> ReadLink(const Target& target, const std::string& path) {
  std::array<char, PATH_MAX> text;
  const ssize_t size = ::readlinkat(target.folder->number(), target.name.c_str(), text.data(), text.size());
  if (size >= 0) return std::string(text.data(), static_cast<std::size_t>(size));
  if (errno == EINVAL || errno == ENOENT) return std::nullopt;
  ThrowIoError(path, kNotWritten, errno);
}

/// Throws unless `path` leads to `target` now, as the system follows it. It does not where a link was changed
/// meanwhile, where it leads to a file that has lost its name (links below /proc do), or where the system
/// does not follow a link: Linux protects against links of others in folders that everybody may write to.
void RequireSameFile(const Target& target, const std::string& path) {
  struct stat followed {};
  if (::stat(path.c_str(), &followed) != 0) {
    if (errno == ENOENT) return;  // A file that does not exist yet has no identity.
    ThrowIoError(path, kNotWritten, errno);
  }
  struct stat found {};
  const bool exists =
      ::fstatat(target.folder->number(), target.name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0;
  if (exists && IdOf(found) == IdOf(followed)) return;
  throw kit::FileIoError(path, "leads to a file that has no name, or is being changed", "give another path");
}

/// The regular file at `target`, or nothing where there is none. Throws where something else is there.
std::optional<struct stat> Look(const Target& target, const std::string& path) {
  struct stat status {};
  if (::fstatat(target.folder->number(), target.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    if (errno == ENOENT) return std::nullopt;
    ThrowIoError(path, kNotWritten, errno);
  }
  if (S_ISDIR(status.st_mode)) ThrowIoError(path, kNotWritten, EISDIR);
  if (!S_ISREG(status.st_mode)) {
    throw kit::FileIoError(path, "cannot be written: Not a regular file", "give the path of a file");
  }
  return status;
}

}  // namespace

Folder::Folder(int base, const std::string& folder, const std::string& path)
    : descriptor_(OpenFolder(base, folder, O_RDONLY)) {
  if (!descriptor_.is_open() && errno == EACCES) {  // A folder that may be written to need not be readable.
    readable_ = false;
    descriptor_ = FileDescriptor(OpenFolder(base, folder, kSearchOnly));
  }
  struct stat status {};
  if (!descriptor_.is_open() || ::fstat(number(), &status) != 0) ThrowIoError(path, kNoFolder, errno);
  id_ = IdOf(status);
}

int Folder::Flush() const {
  if (!readable_ || RetryInterrupted([&] { return ::fsync(number()); }) == 0) return 0;
  const bool unknown_here = errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
  return unknown_here ? 0 : errno;
}

std::string FolderOf(const std::string& path) {
  const std::filesystem::path whole(path);
  return whole.has_parent_path() ? whole.parent_path().string() : ".";
}

Target Resolve(std::shared_ptr<const Folder> folder, const std::string& path) {
  Target target{std::move(folder), std::filesystem::path(path).filename().string()};
  for (int links = 0;; ++links) {
    if (target.name.empty()) ThrowIoError(path, kNotWritten, EISDIR);
    const std::optional<std::string> link = ReadLink(target, path);
    if (!link) break;
    if (links == kMostLinks) ThrowIoError(path, kNotWritten, ELOOP);
    target = {std::make_shared<Folder>(target.folder->number(), FolderOf(*link), path),
              std::filesystem::path(*link).filename().string()};
  }
  RequireSameFile(target, path);
  return target;
}

std::optional<struct stat> LookForWriting(const Target& target, const std::string& path) {
  const std::optional<struct stat> status = Look(target, path);
  if (!status) return status;
  constexpr int kFlags = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  const FileDescriptor file(
      RetryInterrupted([&] { return ::openat(target.folder->number(), target.name.c_str(), kFlags); }));
  if (!file.is_open() && errno != ENOENT) ThrowIoError(path, kNotWritten, errno);
  return status;
}

}  // namespace kit
