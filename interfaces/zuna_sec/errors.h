#pragma once

#include "kit/error.h"

namespace zuna_sec {

/// Base of everything that an encrypted file can be refused for. A file that cannot be opened, read or
/// written is a kit::IoError instead. Every message names the path, or "encrypted data", and what the user
/// can do.
class ZUNA_API CipherError : public kit::RuntimeError {
 public:
  using kit::RuntimeError::RuntimeError;
};

/// The data does not begin like an encrypted file of this kind.
class ZUNA_API NotEncryptedError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// The data ends before the length that its header states.
class ZUNA_API TruncatedError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// The data goes on after the length that its header states.
class ZUNA_API TrailingBytesError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// An envelope version or cipher suite that this library does not know.
class ZUNA_API UnsupportedEnvelopeError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// The key or the IV is not the one that the data was encrypted with.
class ZUNA_API WrongKeyError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// The key is right, but the data was changed after it was encrypted.
class ZUNA_API DamagedError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// More data than an encrypted file may hold (1 GiB).
class ZUNA_API TooLargeError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// The cryptographic library cannot provide the cipher.
class ZUNA_API CipherUnavailableError : public CipherError {
 public:
  using CipherError::CipherError;
};

}  // namespace zuna_sec
