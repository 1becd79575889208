// Why encrypted data is refused; docs/envelope.md lists the checks in their order.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "kit/error.h"

namespace zuna_sec {

/// Base of the errors for encrypted data that is refused. A file that cannot be opened, read or
/// written is a kit::IoError instead.
class ZUNA_API CipherError : public kit::RuntimeError {
 public:
  /// An error with the message "NAME: PROBLEM; REMEDY".
  CipherError(const std::string& name, const std::string& problem, const std::string& remedy,
              std::optional<std::uint64_t> offset = std::nullopt)
      : RuntimeError(name + ": " + problem + "; " + remedy),
        parts_(std::make_shared<const Parts>(Parts{name, problem, remedy, offset})) {}

  /// What was refused: the path of a file, or "encrypted data".
  const std::string& name() const { return parts_->name; }

  /// What is wrong with it, and where.
  const std::string& problem() const { return parts_->problem; }

  /// What the user can do.
  const std::string& remedy() const { return parts_->remedy; }

  /// The byte of the encrypted data that is wrong, or where the data ends too early or should have ended,
  /// where it is known.
  std::optional<std::uint64_t> offset() const { return parts_->offset; }

 private:
  struct Parts {
    std::string name;
    std::string problem;
    std::string remedy;
    std::optional<std::uint64_t> offset;
  };

  std::shared_ptr<const Parts> parts_;  // shared, so that a copy cannot fail
};

/// The data does not begin like an encrypted file of this kind.
class ZUNA_API NotEncryptedError : public CipherError {
 public:
  using CipherError::CipherError;
};

/// There is no data at all.
class ZUNA_API EmptyError : public NotEncryptedError {
 public:
  using NotEncryptedError::NotEncryptedError;
};

/// The data begins like an encrypted file that was copied as text: line ends were changed, or the eighth bit
/// of every byte was cut off.
class ZUNA_API ChangedInTransferError : public NotEncryptedError {
 public:
  using NotEncryptedError::NotEncryptedError;
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
