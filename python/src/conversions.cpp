// From version to version.
#include "toolkit/conversion/conversion.h"

#include "cmn/file_format.h"
#include "python/src/document.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/conversion/copy_fermatas.h"
#include "toolkit/error.h"

namespace zuna_python {

namespace {

using zuna_toolkit::Error;
using zuna_toolkit::ErrorCode;

SharedDocument UpTo(const Document& document, const SharedDocument& companion, const std::string& version) {
  const cmn::FileVersion to = VersionOf(version);
  return Unlocked([&] {
    return document.With(zuna_toolkit::Up(document.content(), CompanionOf(document, companion), to));
  });
}

SharedDocument Down(const Document& document) {
  return Unlocked([&] { return document.With(zuna_toolkit::Down(document.content())); });
}

SharedDocument Convert(const Document& document, const std::string& version) {
  const cmn::FileVersion to = VersionOf(version);
  return Unlocked([&] { return document.With(zuna_toolkit::Convert(document.content(), to)); });
}

SharedDocument CopyFermatas(const Document& document, const Document& source) {
  return Unlocked([&] {
    return document.With(zuna_toolkit::CopyFermatas(source.content(), document.content()).document);
  });
}

}  // namespace

zuna_toolkit::Companion CompanionOf(const Document& document, const SharedDocument& companion) {
  if (!companion) return {};
  const zuna_toolkit::Document& content = companion->content();
  if (content.type().kind == document.content().type().kind) {
    throw Error(ErrorCode::kWrongCompanion, content.name(),
                "is a " + std::string(KindName(content.type().kind)) + " itself",
                "give the log of a show, or the show of a log");
  }
  zuna_toolkit::Companion made = zuna_toolkit::CompanionFrom(content);
  if (!zuna_toolkit::FitOf(document.content(), made).belongs) {
    throw Error(ErrorCode::kUnrelatedCompanion, content.name(), "has no song of " + document.content().name(),
                "give its own companion, or none");
  }
  return made;
}

void AddConversions(DocumentClass& document) {
  const std::string newest = cmn::VersionText(cmn::kDefaultVersion);
  document
      .def("up", UpTo, py::arg("companion") = nullptr, py::arg("version") = newest,
           "A legacy document at a current version. The companion is another Document: the log of a show "
           "tells its "
           "name, the show of a log the divisions of its songs. Raises Error where they have no song in "
           "common.")
      .def("down", Down, "A document of a current version in format 0.0.")
      .def("convert", Convert, py::arg("version"), "A document of a current version at another one.")
      .def(
          "with_fermatas_of", CopyFermatas, py::arg("source"),
          "A copy of a log with the attaccas and fermatas of another log of the same songs, which going down "
          "drops.");
}

}  // namespace zuna_python
