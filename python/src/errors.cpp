// The exception of the module.
#include "python/src/errors.h"

#include <string>
#include <utility>

#include "cmn/data_error.h"
#include "kit/file.h"
#include "python/src/arguments.h"
#include "toolkit/error_code.h"
#include "zuna_sec/errors.h"

namespace zuna_python {

namespace {

using zuna_toolkit::Error;
using zuna_toolkit::ErrorCode;

constexpr const char* kDocumentation =
    "Everything that the converter refuses. str() is \"FILE: PROBLEM; REMEDY\".\n\n"
    "code: a stable name of what happened, such as \"wrong-key\" (docs/errors.md)\n"
    "file, problem, remedy: the parts of the message\n"
    "song: the number of the song\n"
    "field: the path of the field, such as \"voice 3, messages[7].time\"\n"
    "offset: in bytes, in the decrypted file, or in the encrypted one where its encryption is at fault\n\n"
    "What is not known is None.";

/// zuna.Error. Lives as long as the interpreter.
PyObject* error_class = nullptr;

void Raise(const Error& error) {
  const zuna_toolkit::ErrorParts& parts = error.parts();
  const py::object raised = py::handle(error_class)(Text(error.what()));
  raised.attr("code") = Text(CodeText(error.code()));
  raised.attr("file") = TextOrNone(parts.file);
  raised.attr("problem") = TextOrNone(parts.problem);
  raised.attr("remedy") = TextOrNone(parts.remedy);
  raised.attr("song") = TextOrNone(parts.song);
  raised.attr("field") = TextOrNone(parts.field);
  raised.attr("offset") = parts.offset;
  PyErr_SetObject(error_class, raised.ptr());
}

void Raise(ErrorCode code, const std::string& file, const std::string& problem, const std::string& remedy) {
  Raise(Error(code, file, problem, remedy));
}

void Translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(thrown);
  } catch (const Error& error) {
    Raise(error);
  } catch (const zuna_sec::CipherError& error) {
    Raise(zuna_toolkit::CodeOf(error), error.name(), error.problem(), error.remedy());
  } catch (const kit::FileIoError& error) {
    Raise(zuna_toolkit::CodeOfSystemError(error.error()), error.path(), error.problem(), error.remedy());
  } catch (const kit::FileExistsError& error) {
    Raise(ErrorCode::kOutputExists, error.path(), "exists",
          "give overwrite=True to replace it, or another path");
  } catch (const kit::FileTooLargeError& error) {
    Raise(ErrorCode::kTooLarge, error.name(), "holds more than " + std::to_string(error.limit()) + " bytes",
          "give another file");
  } catch (const kit::IoError& error) {
    Raise(MessageError(ErrorCode::kIo, error.what()));
  } catch (const cmn::UnsupportedVersionError& error) {
    Raise(MessageError(ErrorCode::kUnsupportedVersion, error.what()));
  } catch (const kit::RuntimeError& error) {
    Raise(MessageError(ErrorCode::kBadContent, error.what()));
  }
}

}  // namespace

Error MessageError(ErrorCode code, const char* message) {
  zuna_toolkit::ErrorParts parts;
  parts.problem = message;
  return {code, std::move(parts), message};
}

void AddErrors(py::module_& module) {
  error_class = PyErr_NewExceptionWithDoc("zuna.Error", kDocumentation, nullptr, nullptr);
  if (error_class == nullptr) throw py::error_already_set();
  const py::handle type = error_class;
  for (const char* name : {"code", "file", "problem", "remedy", "song", "field", "offset"}) {
    py::setattr(type, name, py::none());
  }
  module.add_object("Error", type);
  py::register_exception_translator(Translate);
}

}  // namespace zuna_python
