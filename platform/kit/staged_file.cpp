// One output from its making to its place.

#include "platform/kit/internal/staged_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace kit {

namespace {

constexpr std::size_t kCopiedAtOnce = 65536;
constexpr const char* kNotKept = "cannot be written (keeping the old file until all are written)";

bool HasOtherPermissions(const struct stat& file, const std::optional<struct stat>& known) {
  return !known || known->st_mode != file.st_mode || known->st_gid != file.st_gid;
}

}  // namespace

StagedFile::StagedFile(std::string path, Target target, std::size_t number, Existing existing)
    : path_(std::move(path)),
      target_(std::move(target)),
      existing_(existing),
      new_name_("new", number),
      old_name_("old", number) {}

std::optional<struct stat> StagedFile::Inspect() const {
  if (existing_ == Existing::kReplace) return LookForWriting(target_, path_);
  if (FileInPlace()) throw FileExistsError(path_);  // whatever it is, a symbolic link too
  return std::nullopt;
}

void StagedFile::Write(const StagingFolder& staging, std::span<const std::uint8_t> bytes, unsigned new_mode) {
  old_ = Inspect();
  staging_ = &staging;
  FileDescriptor file = staging.Create(new_name_, old_ ? kOwnerOnly : new_mode, path_);
  is_staged_ = true;
  struct stat status {};
  if (::fstat(file.number(), &status) != 0) ThrowIoError(path_, "cannot be written", errno);
  id_ = IdOf(status);
  WriteAll(file.number(), bytes, path_);
  if (old_) GivePermissionsOf(*old_, file.number(), path_);
  FlushAndClose(file, path_);
  is_complete_ = true;
}

void StagedFile::Place(bool keep, const std::set<FileId>& others) {
  if (existing_ == Existing::kRefuse) {
    PlaceNew(others);
  } else {
    PlaceReplacing(keep, others);
  }
  is_placed_ = true;
}

std::optional<FileId> StagedFile::FileInPlace() const {
  struct stat found {};
  if (::fstatat(target_.folder->number(), target_.name.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0) return {};
  return IdOf(found);
}

/// Two paths lead to one file by links, and where upper and lower case are not told apart.
void StagedFile::RequireNoneOf(const std::set<FileId>& others) const {
  if (others.empty()) return;
  const std::optional<FileId> found = FileInPlace();
  if (!found || !others.contains(*found)) return;
  throw kit::FileIoError(path_, "leads to the file of another output", "give each output a path of its own");
}

void StagedFile::PlaceNew(const std::set<FileId>& others) {
  if (staging_->MoveWithoutReplacing(new_name_, target_) == 0) return;
  if (errno != EEXIST) ThrowIoError(path_, "cannot be written (giving it its name)", errno);
  RequireNoneOf(others);
  throw FileExistsError(path_);
}

void StagedFile::PlaceReplacing(bool keep, const std::set<FileId>& others) {
  const std::optional<struct stat> old = Inspect();  // It may be another file by now.
  if (old) RequireNoneOf(others);
  if (old && HasOtherPermissions(*old, old_)) GivePermissionsOf(*old, Reopen().number(), path_);
  if (old && keep) Keep(*old);
  if (staging_->MoveReplacing(new_name_, target_) != 0) {
    ThrowIoError(path_, "cannot be written (replacing it)", errno);
  }
  is_staged_ = false;
}

FileDescriptor StagedFile::Reopen() const {
  constexpr int kFlags = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  FileDescriptor file(
      RetryInterrupted([&] { return ::openat(staging_->number(), new_name_.text.data(), kFlags); }));
  struct stat status {};
  if (!file.is_open() || ::fstat(file.number(), &status) != 0) {
    ThrowIoError(path_, "cannot be written (setting its mode)", errno);
  }
  if (IdOf(status) == id_) return file;
  throw kit::FileIoError(path_, "is replaced by another program before it has its place",
                         "choose another folder");
}

void StagedFile::Keep(const struct stat& old) {
  const int linked =
      ::linkat(target_.folder->number(), target_.name.c_str(), staging_->number(), old_name_.text.data(), 0);
  if (linked != 0) KeepCopy(old);  // Some file systems have no hard links, and some files must get none.
  has_kept_ = true;
}

void StagedFile::KeepCopy(const struct stat& old) {
  constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  const FileDescriptor from(
      RetryInterrupted([&] { return ::openat(target_.folder->number(), target_.name.c_str(), kFlags); }));
  if (!from.is_open()) ThrowIoError(path_, kNotKept, errno);
  FileDescriptor to = staging_->Create(old_name_, kOwnerOnly, path_);
  has_kept_ = true;  // in part, until this is done; the place has the old file as long as that
  std::array<std::uint8_t, kCopiedAtOnce> piece;
  for (;;) {
    const ssize_t size = RetryInterrupted([&] { return ::read(from.number(), piece.data(), piece.size()); });
    if (size < 0) ThrowIoError(path_, kNotKept, errno);
    if (size == 0) break;
    WriteAll(to.number(), {piece.data(), static_cast<std::size_t>(size)}, path_);
  }
  GivePermissionsOf(old, to.number(), path_);
  FlushAndClose(to, path_);
}

void StagedFile::TakeBack() {
  if (!is_placed_) return;
  is_placed_ = false;
  const std::optional<FileId> found = FileInPlace();
  if (found ? *found != id_ : errno == ENOENT) return;  // What another program has done there stays.
  if (!has_kept_) {
    if (::unlinkat(target_.folder->number(), target_.name.c_str(), 0) == 0) return;
    ThrowIoError(path_, "is written, but another file is not (removing it)", errno);
  }
  has_kept_ = false;  // It is in its place now, or must not be removed.
  if (staging_->MoveReplacing(old_name_, target_) == 0) return;
  const int error = errno;
  ThrowIoError(path_,
               "is replaced, but another file is not (putting back the old one, now in its folder as \"" +
                   staging_->name() + "/" + old_name_.text.data() + "\")",
               error);
}

int StagedFile::RemoveLeftovers() {
  const int new_left = is_staged_ ? RemoveStaged(new_name_) : 0;
  const int old_left = has_kept_ ? RemoveStaged(old_name_) : 0;
  is_staged_ = false;
  has_kept_ = false;
  return new_left != 0 ? new_left : old_left;
}

int StagedFile::RemoveStaged(const StagedName& name) const {
  // A name that was given to the place by MoveWithoutReplacing() may be gone.
  return ::unlinkat(staging_->number(), name.text.data(), 0) == 0 || errno == ENOENT ? 0 : errno;
}

}  // namespace kit
