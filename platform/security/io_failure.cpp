#include "platform/security/io_failure.h"

#include <system_error>

#include "kit/error.h"

namespace zuna_security {

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

}  // namespace zuna_security
