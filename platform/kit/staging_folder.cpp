// A private folder beside outputs, in which they are made complete.

#include "platform/kit/internal/staging_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <utility>

#include "kit/file.h"
#include "kit/format.h"

namespace kit {

namespace {

constexpr const char* kNotCreated = "cannot be written (creating a file in its folder)";
constexpr int kMostNames = 100;
constexpr mode_t kPrivateFolder = 0700;
constexpr mode_t kOwnersPermissions = 0700;
constexpr mode_t kOthersPermissions = 0007;

/// Group and others may do what both might do before: members of either group may be among them now.
mode_t WithoutGroup(mode_t mode) {
  const mode_t shared = (mode >> 3) & mode & kOthersPermissions;
  return static_cast<mode_t>((mode & kOwnersPermissions) | (shared << 3) | shared);
}

/// A name that cannot be guessed. Throws kit::IoError about `path`.
std::string RandomName(const std::string& path) {
  // Not by std::random_device: its default took 40 us here where this takes 0.3 us.
  std::array<unsigned, 2> random{};
  if (RetryInterrupted([&] { return ::getentropy(random.data(), sizeof random); }) != 0) {
    throw kit::FileIoError(path, "cannot be written: the system gives no random numbers", "check the system");
  }
  return kit::format(".zuna-%08x%08x.tmp", random[0], random[1]);
}

}  // namespace

void GivePermissionsOf(const struct stat& old, int file, const std::string& path) {
  constexpr const char* kFailed = "cannot be written (setting its mode)";
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  struct stat status {};
  if (::fstat(file, &status) != 0) ThrowIoError(path, kFailed, errno);
  const bool group_kept = status.st_gid == old.st_gid || ::fchown(file, kSameOwner, old.st_gid) == 0;
  const mode_t mode = old.st_mode & kPermissions;
  if (::fchmod(file, group_kept ? mode : WithoutGroup(mode)) != 0) ThrowIoError(path, kFailed, errno);
}

StagedName::StagedName(const char* prefix, std::size_t number) : text() {
  std::snprintf(text.data(), text.size(), "%s-%zu", prefix, number);
}

StagingFolder::StagingFolder(std::shared_ptr<const Folder> parent, const std::string& path)
    : parent_(std::move(parent)), descriptor_(-1) {
  int error = EEXIST;
  for (int names = 0; names < kMostNames && error == EEXIST; ++names) error = Make(path);
  if (error != 0) ThrowIoError(path, kNotCreated, error);
}

int StagingFolder::Make(const std::string& path) {
  name_ = RandomName(path);
  if (::mkdirat(parent_->number(), name_.c_str(), kPrivateFolder) != 0) return errno;
  exists_ = true;
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  descriptor_ =
      FileDescriptor(RetryInterrupted([&] { return ::openat(parent_->number(), name_.c_str(), kFlags); }));
  const int error = descriptor_.is_open() ? Lock() : errno;
  if (error == 0) return 0;
  Remove();
  return error == ENOENT ? EEXIST : error;
}

int StagingFolder::Lock() const {
  const int locked = RetryInterrupted([&] { return ::flock(number(), LOCK_EX | LOCK_NB); });
  if (locked != 0 && errno == EWOULDBLOCK) return EEXIST;  // Elsewhere, some file systems have no locks.
  struct stat opened {};
  struct stat named {};
  const bool is_known = ::fstat(number(), &opened) == 0 &&
                        ::fstatat(parent_->number(), name_.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0;
  if (!is_known) return errno;
  return IdOf(opened) == IdOf(named) ? 0 : EEXIST;
}

FileDescriptor StagingFolder::Create(const StagedName& name, unsigned mode, const std::string& path) const {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  FileDescriptor file(RetryInterrupted(
      [&] { return ::openat(number(), name.text.data(), kFlags, static_cast<mode_t>(mode)); }));
  if (!file.is_open()) ThrowIoError(path, kNotCreated, errno);
  return file;
}

int StagingFolder::MoveReplacing(const StagedName& name, const Target& target) const {
  return ::renameat(number(), name.text.data(), target.folder->number(), target.name.c_str());
}

int StagingFolder::MoveWithoutReplacing(const StagedName& name, const Target& target) const {
  const int to = target.folder->number();
#if defined(__linux__) && defined(RENAME_NOREPLACE)
  if (::renameat2(number(), name.text.data(), to, target.name.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != ENOSYS && errno != EINVAL) return -1;  // Old kernels and some file systems have no such call.
#endif
  return ::linkat(number(), name.text.data(), to, target.name.c_str(), 0);
}

int StagingFolder::Remove() {
  if (!exists_) return 0;
  exists_ = false;
  return ::unlinkat(parent_->number(), name_.c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
}

}  // namespace kit
