#pragma once

// The errors of current shows and logs, thrown by the core library.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "kit/error.h"

namespace cmn {

/// Data that is not a valid current show or log. Copying it does not throw.
class ZUNA_API DataError : public kit::RuntimeError {
 public:
  /// What an error tells. what() is composed of what is present:
  /// song "SONG", FIELD: PROBLEM (at byte OFFSET); REMEDY
  struct Parts {
    std::optional<std::string> song = {};      ///< the number of the song, as the data states it
    std::string field = {};                    ///< path of the field, such as "voice 3, messages[7].time"
    std::optional<std::uint64_t> offset = {};  ///< in bytes from the beginning of the file
    std::string problem = {};                  ///< what is wrong
    std::string remedy = {};                   ///< what the user can do
  };

  /// An error at a place in the data.
  explicit DataError(Parts parts);
  /// An error that concerns the data as a whole.
  explicit DataError(const std::string& problem, const std::string& remedy = {});

  /// The number of the song that the error is in, where it is known.
  const std::optional<std::string>& song() const noexcept;
  /// The path of the field; empty where the error concerns no single field.
  const std::string& field() const noexcept;
  /// The offset in bytes from the beginning of the file, where it is known.
  std::optional<std::uint64_t> offset() const noexcept;
  /// What is wrong, without place and remedy.
  const std::string& problem() const noexcept;
  /// What the user can do; empty where the library has no advice.
  const std::string& remedy() const noexcept;

 private:
  std::shared_ptr<const Parts> parts_;  // shared, so that copying does not throw
};

/// A binary file that ends before it has the bytes that its header states; the offset is where it ends.
class ZUNA_API CutOffError : public DataError {
 public:
  using DataError::DataError;
};

/// A binary file that goes on after the bytes that its header states; the offset is where these end.
class ZUNA_API BytesAfterEndError : public DataError {
 public:
  using DataError::DataError;
};

/// A file version that this library cannot read or write; the message lists those that it can.
class ZUNA_API UnsupportedVersionError : public DataError {
 public:
  using DataError::DataError;
};

}  // namespace cmn
