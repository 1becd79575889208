// Exit codes and messages of everything that the libraries throw.
#include "cli/terminal/failure.h"

#include <new>

#include "kit/error.h"
#include "kit/file.h"
#include "toolkit/error.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::ErrorKind;

ExitCode CodeOf(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::kBadInput:
      return ExitCode::kBadInput;
    case ErrorKind::kWrongKey:
    case ErrorKind::kKeyMissing:
      return ExitCode::kWrongKey;
    case ErrorKind::kIo:
      return ExitCode::kIo;
    case ErrorKind::kNoSuchVersion:
      return ExitCode::kUsage;
  }
  return ExitCode::kInternal;
}

Failure FailureFrom(const zuna_toolkit::Error& error) {
  if (error.kind() != ErrorKind::kKeyMissing) return {CodeOf(error.kind()), error.what()};
  return {ExitCode::kWrongKey, error.parts().file,
          error.parts().problem + "; name its key file with --key-file or ZUNA_KEY_FILE"};
}

}  // namespace

Failure CurrentFailure() {
  try {
    throw;
  } catch (const Failure& error) {
    return error;
  } catch (const zuna_toolkit::Error& error) {
    return FailureFrom(error);
  } catch (const kit::IoError& error) {
    return {ExitCode::kIo, error.what()};
  } catch (const kit::FileExistsError& error) {
    return {ExitCode::kRefused, error.path(),
            "has appeared meanwhile; give --force to replace it, or another output"};
  } catch (const kit::FileTooLargeError& error) {
    return {ExitCode::kBadInput, error.what()};
  } catch (const zuna_sec::CipherError& error) {
    return {ExitCode::kBadInput, error.what()};
  } catch (const std::bad_alloc&) {
    return {ExitCode::kInternal, "out of memory; close other programs or take a smaller file"};
  } catch (const std::exception& error) {
    return {ExitCode::kInternal, "internal error: " + std::string(error.what()) + "; please report it"};
  } catch (...) {
    return {ExitCode::kInternal, "internal error; please report it"};
  }
}

}  // namespace zuna_cli
