// The message of a failed system call: what failed, the reason, and what to do about it.

#include "platform/kit/internal/system_calls.h"

#include <system_error>

#include "kit/error.h"

namespace kit {

namespace {

const char* Remedy(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
      return "check the path";
    case EISDIR:
      return "give the path of a file";
    case EACCES:
    case EPERM:
    case EROFS:
      return "check the permissions, or choose another folder";
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return "free some space, or choose another folder";
    default:
      return "check the disk, or choose another folder";
  }
}

}  // namespace

void ThrowIoError(const std::string& path, std::string_view what, int error) {
  throw kit::IoError(path + ": " + std::string(what) + ": " + std::generic_category().message(error) + "; " +
                     Remedy(error));
}

}  // namespace kit
