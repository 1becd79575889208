#pragma once

#include "kit/error.h"

namespace cmn {

/// Data that is not a valid current show or log: the message names the song, the field and the offset in
/// bytes.
class ZUNA_API DataError : public kit::RuntimeError {
 public:
  using kit::RuntimeError::RuntimeError;
};

/// A file version that this library cannot read or write; the message lists those that it can.
class ZUNA_API UnsupportedVersionError : public DataError {
 public:
  using DataError::DataError;
};

}  // namespace cmn
