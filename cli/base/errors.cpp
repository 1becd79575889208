#include "cli/base/errors.h"

#include <ios>
#include <new>
#include <string_view>

#include "cmn/data_error.h"
#include "format_converter/errors.h"
#include "format_converter/version0/primitives/errors.h"
#include "kit/error.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kNamelessData = "encrypted data: ";

/// `message` with `name` in front, unless it names a file already. Messages about bytes from standard input
/// name "encrypted data" instead.
std::string WithName(const std::string& name, std::string_view message) {
  if (message.starts_with(kNamelessData)) message.remove_prefix(kNamelessData.size());
  if (message.starts_with(name + ": ")) return std::string(message);
  return name + ": " + std::string(message);
}

/// A message of the core library with what to do, which those about a single field do not tell.
std::string WithRemedy(const std::string& message) {
  if (message.find("; ") != std::string::npos) return message;
  return message + "; get an undamaged copy of the file, or correct its text";
}

}  // namespace

Failure FailureOf(const std::string& name) {
  const auto failure = [&](ExitCode code, std::string_view message) {
    return Failure(code, WithName(name, message));
  };
  try {
    throw;
  } catch (const Failure& error) {
    return error;
  } catch (const zuna_toolkit::Error& error) {
    return failure(ExitCode::kBadInput, error.what());
  } catch (const zuna_sec::WrongKeyError& error) {
    return failure(ExitCode::kWrongKey, error.what());
  } catch (const kit::IoError& error) {
    return failure(ExitCode::kIo, error.what());
  } catch (const std::ios_base::failure&) {
    return failure(ExitCode::kBadInput, "ends too early or is damaged; get an undamaged copy of the file");
  } catch (const version0::Version0Error& error) {
    return failure(ExitCode::kBadInput, std::string(error.what()) + "; get an undamaged copy of the file");
  } catch (const cmn::DataError& error) {
    return failure(ExitCode::kBadInput, WithRemedy(error.what()));
  } catch (const std::exception& error) {
    return failure(ExitCode::kBadInput, error.what());
  }
}

Failure FailureOfCommand() {
  const auto failure = [](ExitCode code, const std::exception& error) { return Failure(code, error.what()); };
  try {
    throw;
  } catch (const Failure& error) {
    return error;
  } catch (const zuna_sec::WrongKeyError& error) {
    return failure(ExitCode::kWrongKey, error);
  } catch (const kit::IoError& error) {
    return failure(ExitCode::kIo, error);
  } catch (const zuna_sec::CipherError& error) {
    return failure(ExitCode::kBadInput, error);
  } catch (const cmn::DataError& error) {
    return failure(ExitCode::kBadInput, error);
  } catch (const version0::Version0Error& error) {
    return failure(ExitCode::kBadInput, error);
  } catch (const std::bad_alloc&) {
    return Failure(ExitCode::kInternal, "out of memory; close other programs or take a smaller file");
  } catch (const std::exception& error) {
    return Failure(ExitCode::kInternal,
                   "internal error: " + std::string(error.what()) + "; please report it");
  } catch (...) {
    return Failure(ExitCode::kInternal, "internal error; please report it");
  }
}

}  // namespace zuna_cli
