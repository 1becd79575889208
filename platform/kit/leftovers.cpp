// What processes that were killed have left in folders of outputs.

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "kit/error.h"
#include "kit/file.h"
#include "kit/hex.h"
#include "kit/path.h"
#include "platform/kit/internal/staging_folder.h"

namespace kit {

namespace {

/// Whether a private folder has this name: ".zuna-", 16 hexadecimal digits, ".tmp".
bool IsStagingName(std::string_view name) {
  constexpr std::string_view kBegin = ".zuna-";
  constexpr std::string_view kEnd = ".tmp";
  constexpr std::size_t kDigits = 16;
  if (name.size() != kBegin.size() + kDigits + kEnd.size()) return false;
  if (!name.starts_with(kBegin) || !name.ends_with(kEnd)) return false;
  const std::string_view digits = name.substr(kBegin.size(), kDigits);
  return std::all_of(digits.begin(), digits.end(), [](char digit) { return HexDigit(digit) >= 0; });
}

/// Whether it is an output that did not get its place. An old file that another one has replaced is not one:
/// there may be no second copy of it.
bool IsUnplaced(std::string_view name) {
  constexpr std::string_view kBegin = "new-";
  return name.starts_with(kBegin) && name.size() > kBegin.size() &&
         name.find_first_not_of("0123456789", kBegin.size()) == std::string_view::npos;
}

/// Opens the folder called `name` and locks it: nothing where it is another user's or a process has it.
FileDescriptor OpenLeftover(const Folder& parent, const std::string& name) {
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  FileDescriptor folder(RetryInterrupted([&] { return ::openat(parent.number(), name.c_str(), kFlags); }));
  struct stat status {};
  const bool is_ours =
      folder.is_open() && ::fstat(folder.number(), &status) == 0 && status.st_uid == ::geteuid();
  if (!is_ours || ::flock(folder.number(), LOCK_EX | LOCK_NB) != 0) return FileDescriptor(-1);
  return folder;
}

void RemoveLeftover(const Folder& parent, const std::string& path, const std::string& name) {
  const FileDescriptor folder = OpenLeftover(parent, name);
  if (!folder.is_open()) return;
  const std::vector<std::string> files = listdir(path::Join(path, name));
  if (!std::all_of(files.begin(), files.end(), IsUnplaced)) return;
  for (const std::string& file : files) ::unlinkat(folder.number(), file.c_str(), 0);
  ::unlinkat(parent.number(), name.c_str(), AT_REMOVEDIR);
}

}  // namespace

void RemoveLeftovers(const std::string& folder) try {
  const Folder parent(AT_FDCWD, folder, folder);
  for (const std::string& name : listdir(folder)) {
    if (IsStagingName(name)) RemoveLeftover(parent, folder, name);
  }
} catch (const IoError&) {
  // It stays: no output depends on it.
}

}  // namespace kit
