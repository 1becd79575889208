// The codes of the errors that other libraries throw.
#include <cerrno>

#include "toolkit/error_code.h"
#include "zuna_sec/errors.h"

namespace zuna_toolkit {

namespace {

template <typename Type>
bool Is(const zuna_sec::CipherError& error) {
  return dynamic_cast<const Type*>(&error) != nullptr;
}

}  // namespace

ErrorCode CodeOf(const zuna_sec::CipherError& error) {
  if (Is<zuna_sec::WrongKeyError>(error)) return ErrorCode::kWrongKey;
  if (Is<zuna_sec::ChangedInTransferError>(error)) return ErrorCode::kChangedInTransfer;
  if (Is<zuna_sec::EmptyError>(error)) return ErrorCode::kEmptyFile;
  if (Is<zuna_sec::NotEncryptedError>(error)) return ErrorCode::kNotEncrypted;
  if (Is<zuna_sec::UnsupportedEnvelopeError>(error)) return ErrorCode::kUnsupportedEnvelope;
  if (Is<zuna_sec::TruncatedError>(error)) return ErrorCode::kCutOff;
  if (Is<zuna_sec::TrailingBytesError>(error)) return ErrorCode::kBytesAfterEnd;
  if (Is<zuna_sec::TooLargeError>(error)) return ErrorCode::kTooLarge;
  if (Is<zuna_sec::CipherUnavailableError>(error)) return ErrorCode::kCipherUnavailable;
  return ErrorCode::kDamaged;
}

ErrorCode CodeOfSystemError(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return ErrorCode::kNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return ErrorCode::kNoPermission;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return ErrorCode::kNoSpace;
    default:
      return ErrorCode::kIo;
  }
}

}  // namespace zuna_toolkit
