// Exit codes and messages of everything that the libraries throw.
#include "cli/terminal/failure.h"

#include <new>
#include <string>
#include <utility>

#include "kit/error.h"
#include "kit/file.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::ErrorKind;

/// The toolkit does not know where the tool gets its keys from.
Failure WithKeyRemedy(const Failure& failure) {
  if (failure.code() != ErrorCode::kNoKey) return failure;
  zuna_toolkit::ErrorParts parts = failure.parts();
  parts.remedy = "name its key file with --key-file or ZUNA_KEY_FILE";
  return {failure.code(), std::move(parts)};
}

}  // namespace

ExitCode ExitCodeOf(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::kBadInput:
      return ExitCode::kBadInput;
    case ErrorKind::kWrongKey:
      return ExitCode::kWrongKey;
    case ErrorKind::kIo:
      return ExitCode::kIo;
    case ErrorKind::kUsage:
      return ExitCode::kUsage;
    case ErrorKind::kRefused:
      return ExitCode::kRefused;
    case ErrorKind::kNegative:
      return ExitCode::kNegative;
    case ErrorKind::kNothingMatched:
      return ExitCode::kNothingMatched;
    case ErrorKind::kInterrupted:
      return ExitCode::kInterrupted;
    case ErrorKind::kClosedPipe:
      return ExitCode::kClosedPipe;
    case ErrorKind::kInternal:
      break;
  }
  return ExitCode::kInternal;
}

ExitCode Failure::exit_code() const { return ExitCodeOf(kind()); }

Failure CurrentFailure() {
  try {
    throw;
  } catch (const Failure& failure) {
    return WithKeyRemedy(failure);
  } catch (const zuna_toolkit::Error& error) {
    return WithKeyRemedy(Failure(error));
  } catch (const kit::FileIoError& error) {
    return {zuna_toolkit::CodeOfSystemError(error.error()), error.path(), error.problem(), error.remedy()};
  } catch (const kit::IoError& error) {
    return {ErrorCode::kIo, "", error.what(), ""};
  } catch (const kit::FileExistsError& error) {
    return {ErrorCode::kOutputExists, error.path(), "has appeared meanwhile",
            "give --force to replace it, or another output"};
  } catch (const kit::FileTooLargeError& error) {
    return {ErrorCode::kTooLarge, error.name(), "holds more than " + std::to_string(error.limit()) + " bytes",
            "give another file"};
  } catch (const zuna_sec::CipherError& error) {
    return {zuna_toolkit::CodeOf(error), error.name(), error.problem(), error.remedy()};
  } catch (const std::bad_alloc&) {
    return {ErrorCode::kOutOfMemory, "", "out of memory", "close other programs or take a smaller file"};
  } catch (const std::exception& error) {
    return {ErrorCode::kInternal, "", "internal error: " + std::string(error.what()), "please report it"};
  } catch (...) {
    return {ErrorCode::kInternal, "", "internal error", "please report it"};
  }
}

}  // namespace zuna_cli
