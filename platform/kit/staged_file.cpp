// One output from its making to its place.

#include "platform/kit/internal/staged_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace kit {

namespace {

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
  if (Look(target_, path_)) throw FileExistsError(path_);
  return std::nullopt;
}

void StagedFile::Write(const StagingFolder& staging, std::span<const std::uint8_t> bytes, unsigned new_mode) {
  old_ = Inspect();
  staging_ = &staging;
  FileDescriptor file = staging.Create(new_name_, old_ ? kOwnerOnly : new_mode, path_);
  is_staged_ = true;
  WriteAll(file.number(), bytes, path_);
  if (old_) staging.GivePermissionsOf(*old_, new_name_, path_);
  FlushAndClose(file, path_);
}

void StagedFile::Place(bool keep) {
  if (existing_ == Existing::kRefuse) {
    PlaceNew();
  } else {
    PlaceReplacing(keep);
  }
  is_placed_ = true;
}

void StagedFile::PlaceNew() {
  if (staging_->MoveWithoutReplacing(new_name_, target_) == 0) return;
  if (errno == EEXIST) throw FileExistsError(path_);
  ThrowIoError(path_, "cannot be written (giving it its name)", errno);
}

void StagedFile::PlaceReplacing(bool keep) {
  const std::optional<struct stat> old = Inspect();  // It may be another file by now.
  if (old && HasOtherPermissions(*old, old_)) staging_->GivePermissionsOf(*old, new_name_, path_);
  if (old && keep) Keep();
  if (staging_->MoveReplacing(new_name_, target_) != 0) {
    ThrowIoError(path_, "cannot be written (replacing it)", errno);
  }
  is_staged_ = false;
}

void StagedFile::Keep() {
  if (::linkat(target_.folder->number(), target_.name.c_str(), staging_->number(), old_name_.text.data(),
               0) != 0) {
    ThrowIoError(path_, "cannot be written (keeping the old file until all are written)", errno);
  }
  has_kept_ = true;
}

void StagedFile::TakeBack() {
  if (!is_placed_) return;
  is_placed_ = false;
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
  int error = 0;
  if (is_staged_) error = RemoveStaged(new_name_);
  if (has_kept_ && error == 0) error = RemoveStaged(old_name_);
  is_staged_ = false;
  has_kept_ = false;
  return error;
}

int StagedFile::RemoveStaged(const StagedName& name) const {
  // A name that was given to the place by MoveWithoutReplacing() may be gone.
  return ::unlinkat(staging_->number(), name.text.data(), 0) == 0 || errno == ENOENT ? 0 : errno;
}

}  // namespace kit
