// Replaces a file in one step: a temporary file beside it, filled and flushed, takes its name.

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <random>

#include "kit/file.h"
#include "kit/format.h"
#include "platform/kit/internal/system_calls.h"

namespace kit {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kLargestWrite = std::size_t{1} << 30;  // some systems refuse 2 GiB
constexpr int kMostLinks = 40;
constexpr int kMostNames = 100;

/// The file that `path` leads to through symbolic links. It need not exist.
std::filesystem::path FollowLinks(const std::string& path) {
  std::filesystem::path target = path;
  std::error_code error;
  for (int links = 0; std::filesystem::is_symlink(target, error); ++links) {
    if (links == kMostLinks) ThrowIoError(path, "cannot be written", ELOOP);
    const std::filesystem::path next = std::filesystem::read_symlink(target, error);
    if (error) ThrowIoError(path, "cannot be written", error.value());
    target = target.parent_path() / next;
  }
  return target;
}

void WriteAll(int file, Bytes bytes, const std::string& path) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const Bytes rest = bytes.subspan(written, std::min(bytes.size() - written, kLargestWrite));
    const ssize_t count = RetryInterrupted([&] { return ::write(file, rest.data(), rest.size()); });
    if (count < 0) {
      const int error = errno;
      ThrowIoError(path, kit::format("cannot be written (after %zu of %zu bytes)", written, bytes.size()),
                   error);
    }
    written += static_cast<std::size_t>(count);
  }
}

/// The permissions of the file that takes the target's place.
struct Permissions {
  mode_t at_first;                // as far as the umask allows
  std::optional<mode_t> at_last;  // set when the file is complete
};

/// A new file beside the target, which replaces the target or is removed.
class TemporaryFile {
 public:
  TemporaryFile(const std::filesystem::path& folder, const std::string& path, mode_t mode)
      : path_(path), file_(Create(folder, mode)) {
    if (!file_.is_open()) ThrowIoError(path, "cannot be written (creating a file in its folder)", errno);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!moved_) ::unlink(name_.c_str());
  }

  void Fill(Bytes bytes, std::optional<mode_t> mode) {
    WriteAll(file_.number(), bytes, path_);
    const auto synced = [&] { return ::fsync(file_.number()); };
    if (mode && ::fchmod(file_.number(), *mode) != 0) {
      ThrowIoError(path_, "cannot be written (setting its mode)", errno);
    }
    if (RetryInterrupted(synced) != 0 || !file_.Close()) {
      ThrowIoError(path_, "cannot be written (flushing it to the disk)", errno);
    }
  }

  void MoveTo(const std::filesystem::path& target) {
    if (::rename(name_.c_str(), target.c_str()) != 0) {
      ThrowIoError(path_, "cannot be written (replacing it)", errno);
    }
    moved_ = true;
  }

 private:
  int Create(const std::filesystem::path& folder, mode_t mode) {
    std::random_device random;
    for (int names = 0; names < kMostNames; ++names) {
      name_ = (folder / kit::format(".zuna-%08x%08x.tmp", random(), random())).string();
      const int file = RetryInterrupted(
          [&] { return ::open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
      if (file >= 0 || errno != EEXIST) return file;
    }
    return -1;
  }

  const std::string& path_;  // as the caller names the target, for messages
  std::string name_;
  FileDescriptor file_;
  bool moved_ = false;
};

/// Makes a rename survive a power failure. A failure is ignored: some file systems cannot flush folders, and
/// the rename cannot be undone.
void SyncFolder(const FileDescriptor& folder) {
  if (folder.is_open()) RetryInterrupted([&] { return ::fsync(folder.number()); });
}

void Replace(const std::filesystem::path& target, Permissions permissions, Bytes bytes,
             const std::string& path) {
  const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
  TemporaryFile temporary(folder, path, permissions.at_first);
  temporary.Fill(bytes, permissions.at_last);
  const FileDescriptor opened_folder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  temporary.MoveTo(target);
  SyncFolder(opened_folder);
}

}  // namespace

void WriteFileAtomically(const std::string& path, Bytes bytes, unsigned new_mode) {
  if (path.empty()) throw kit::IoError("the path to write to is empty; give the path of a file");

  // Opened for writing, so that a write-protected file is refused.
  FileDescriptor old(RetryInterrupted([&] { return ::open(path.c_str(), O_WRONLY | O_CLOEXEC); }));
  if (!old.is_open()) {
    if (errno != ENOENT) ThrowIoError(path, "cannot be written", errno);
    return Replace(FollowLinks(path), {static_cast<mode_t>(new_mode), std::nullopt}, bytes, path);
  }
  struct stat status {};
  if (::fstat(old.number(), &status) != 0) ThrowIoError(path, "cannot be written", errno);
  if (S_ISREG(status.st_mode)) {
    const mode_t kept = status.st_mode & 07777;
    return Replace(FollowLinks(path), {kOwnerOnly, kept}, bytes, path);
  }
  WriteAll(old.number(), bytes, path);
  if (!old.Close()) ThrowIoError(path, "cannot be written", errno);
}

}  // namespace kit
