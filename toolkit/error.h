// The one exception class of the toolkit. The headers name codes of ErrorCode alone, such as kWrongKey, and
// kinds with ErrorKind, such as ErrorKind::kIo: any code of that kind.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "kit/api.h"
#include "kit/error.h"
#include "toolkit/error_code.h"

namespace zuna_toolkit {

/// What an error knows. Texts are empty where they do not apply. Where the platform throws a kit::IoError
/// that is no kit::FileIoError, the problem is that whole message, and there is no remedy.
struct ErrorParts {
  std::string file;                     ///< what messages call the file
  std::string problem;                  ///< what happened and where, without the file and the remedy
  std::string remedy;                   ///< what the user can do; may name a command of zuna-convert
  std::string song;                     ///< the song number
  std::string field;                    ///< path of the field, such as "voice 3, messages[7].time"
  std::optional<std::uint64_t> offset;  ///< in bytes: in the decrypted file, or in the encrypted one where
                                        ///< the error is one of its encryption
};

/// Everything that the toolkit refuses. The message is "FILE: PROBLEM; REMEDY".
class ZUNA_API Error : public kit::RuntimeError {
 public:
  /// An error whose message is composed of its parts.
  Error(ErrorCode code, ErrorParts parts);

  /// An error whose message was composed elsewhere.
  Error(ErrorCode code, ErrorParts parts, const std::string& message);

  /// A problem of `file` with a remedy; no song, field or offset.
  Error(ErrorCode code, const std::string& file, const std::string& problem, const std::string& remedy);

  /// What happened, for programs.
  ErrorCode code() const { return code_; }
  /// What kind of trouble this is; it follows from the code.
  ErrorKind kind() const { return KindOf(code_); }
  /// What the error knows.
  const ErrorParts& parts() const { return *parts_; }

  /// The same error about `file`.
  Error WithFile(const std::string& file) const;

 private:
  ErrorCode code_;
  std::shared_ptr<const ErrorParts> parts_;  ///< shared, so that copying cannot fail
};

}  // namespace zuna_toolkit
