// What the other libraries throw, as the toolkit's own errors.
#include "toolkit/internal/translate.h"

#include <ios>
#include <utility>

#include "cmn/data_error.h"
#include "format_converter/version0/primitives/errors.h"
#include "kit/file.h"
#include "zuna_sec/errors.h"

namespace zuna_toolkit {

namespace {

constexpr const char* kCorrectText = "get an undamaged copy of the file, or correct its text";

ErrorParts DataErrorParts(const std::string& name, const cmn::DataError& error) {
  ErrorParts parts;
  parts.file = name;
  parts.problem = error.problem();
  parts.remedy = error.remedy().empty() ? kCorrectText : error.remedy();
  parts.song = error.song().value_or("");
  parts.field = error.field();
  parts.offset = error.offset();
  return parts;
}

/// The core library composes the place of its errors; what it lacks is the file, and at times the remedy.
Error FromDataError(ErrorCode code, const std::string& name, const cmn::DataError& error) {
  std::string message = name + ": " + error.what();
  if (error.remedy().empty()) message += std::string("; ") + kCorrectText;
  return {code, DataErrorParts(name, error), message};
}

Error FromCipherError(const std::string& name, const zuna_sec::CipherError& error) {
  ErrorParts parts;
  parts.file = name;
  parts.problem = error.problem();
  parts.remedy = error.remedy();
  parts.offset = error.offset();
  return {CodeOf(error), std::move(parts)};
}

/// Its message may hold the file and the remedy already.
Error FromIoError(const std::string& name, const kit::IoError& error) {
  ErrorParts parts;
  parts.file = name;
  parts.problem = error.what();
  return {ErrorCode::kIo, std::move(parts), error.what()};
}

}  // namespace

void ThrowAsError(const std::string& name, ErrorCode data_code) {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const Error& error) {
    if (!error.parts().file.empty()) throw;
    throw error.WithFile(name);
  } catch (const zuna_sec::CipherError& error) {
    throw FromCipherError(name, error);
  } catch (const kit::FileIoError& error) {
    throw Error(CodeOfSystemError(error.error()), error.path(), error.problem(), error.remedy());
  } catch (const kit::IoError& error) {
    throw FromIoError(name, error);
  } catch (const kit::FileTooLargeError& error) {
    throw Error(ErrorCode::kTooLarge, name, "holds more than " + std::to_string(error.limit()) + " bytes",
                "give another file");
  } catch (const cmn::UnsupportedVersionError& error) {
    throw FromDataError(ErrorCode::kUnsupportedVersion, name, error);
  } catch (const cmn::CutOffError& error) {
    throw FromDataError(ErrorCode::kCutOff, name, error);
  } catch (const cmn::BytesAfterEndError& error) {
    throw FromDataError(ErrorCode::kBytesAfterEnd, name, error);
  } catch (const cmn::DataError& error) {
    throw FromDataError(data_code, name, error);
  } catch (const std::ios_base::failure&) {
    throw Error(ErrorCode::kBadContent, name, "ends too early or is damaged", kGetUndamagedCopy);
  } catch (const std::exception& error) {
    throw Error(ErrorCode::kBadContent, name, error.what(), kGetUndamagedCopy);
  }
}

}  // namespace zuna_toolkit
