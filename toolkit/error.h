// The one exception class of the toolkit.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "kit/api.h"
#include "kit/error.h"

namespace zuna_toolkit {

/// What kind of trouble an error reports. A program maps it to an exit code.
enum class ErrorKind {
  kBadInput,       ///< the content of a file is damaged, unsupported or unsuitable
  kWrongKey,       ///< an encrypted file needs another key or IV
  kKeyMissing,     ///< an encrypted file needs a key, and none was given
  kIo,             ///< a file or stream cannot be opened, read or written
  kNoSuchVersion,  ///< the caller asked for a version that is not written, such as a log of version 1.0
};

/// What an error knows. Texts are empty where they do not apply. An error of kind kIo has the whole message
/// as its problem, and no remedy of its own: the platform composes that message out of the path, the reason
/// that the system gives, and the remedy.
struct ErrorParts {
  std::string file;                     ///< what messages call the file
  std::string problem;                  ///< what happened and where, without the file and the remedy
  std::string remedy;                   ///< what the user can do
  std::string song;                     ///< the song number
  std::string field;                    ///< path of the field, such as "voice 3, messages[7].time"
  std::optional<std::uint64_t> offset;  ///< in the decrypted file, in bytes
};

/// Everything that the toolkit refuses. The message is "FILE: PROBLEM; REMEDY".
class ZUNA_API Error : public kit::RuntimeError {
 public:
  /// An error whose message is composed of its parts.
  Error(ErrorKind kind, ErrorParts parts);

  /// An error whose message was composed elsewhere.
  Error(ErrorKind kind, ErrorParts parts, const std::string& message);

  /// A problem of `file` with a remedy; no song, field or offset.
  Error(ErrorKind kind, const std::string& file, const std::string& problem, const std::string& remedy);

  /// What kind of trouble this is.
  ErrorKind kind() const { return kind_; }
  /// What the error knows.
  const ErrorParts& parts() const { return *parts_; }

  /// The same error about `file`.
  Error WithFile(const std::string& file) const;

 private:
  ErrorKind kind_;
  std::shared_ptr<const ErrorParts> parts_;  ///< shared, so that copying cannot fail
};

}  // namespace zuna_toolkit
