// Opening, reading and writing documents.
#include <sstream>
#include <utility>

#include "cmn/file_format.h"
#include "kit/file.h"
#include "python/src/document.h"
#include "python/src/song.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/open.h"
#include "toolkit/document/summary.h"
#include "toolkit/document/text_form.h"
#include "toolkit/document/write.h"

namespace zuna_python {

namespace {

using zuna_toolkit::Accept;

zuna_toolkit::OpenedFile Opened(const Source& source, const CipherKey& key, Accept accept) {
  if (!source.bytes) return {source.name, key, accept};
  return zuna_toolkit::OpenedFile::FromBytes(*source.bytes, source.name, key, accept);
}

zuna_toolkit::Document Read(zuna_toolkit::OpenedFile file) {
  const bool is_text = !file.is_encrypted() && zuna_toolkit::IsTextForm(file);
  return is_text ? zuna_toolkit::ReadTextForm(file) : zuna_toolkit::ReadDocument(file);
}

SharedDocument Open(const py::object& path_or_bytes, const py::bytes& key, const py::bytes& iv,
                    const py::object& key_file, bool plain) {
  const Source source = SourceOf(path_or_bytes);
  const SharedKey material = KeyOf(key, iv, key_file);
  return Unlocked([&] {
    const Accept accept = plain ? Accept::kEncryptedOrPlain : Accept::kEncrypted;
    return std::make_shared<Document>(Read(Opened(source, material->material(), accept)), material);
  });
}

SharedDocument FromText(const py::str& text, const py::bytes& key, const py::bytes& iv,
                        const py::object& key_file) {
  const std::string bytes = BytesOf(text);
  const SharedKey material = KeyOf(key, iv, key_file);
  return Unlocked(
      [&] { return std::make_shared<Document>(zuna_toolkit::ReadTextForm(bytes, "text"), material); });
}

SharedDocument FromDict(const py::dict& dict, const py::bytes& key, const py::bytes& iv,
                        const py::object& key_file) {
  const py::object dumps = py::module_::import("json").attr("dumps");
  return FromText(dumps(dict, py::arg("ensure_ascii") = false), key, iv, key_file);
}

py::str TextOf(const Document& document) {
  const std::string text = Unlocked([&] {
    std::ostringstream os;
    zuna_toolkit::WriteTextForm(document.content(), os);
    return std::move(os).str();
  });
  return Text(text);
}

py::object DictOf(const Document& document) {
  return py::module_::import("json").attr("loads")(TextOf(document));
}

std::vector<std::uint8_t> EncryptedBytes(const Document& document) {
  return zuna_toolkit::CipherStreamOf(document.content(), document.key()->material())->GetEncryptedBytes();
}

void Save(const Document& document, const py::object& path, bool overwrite) {
  const std::string name = PathOf(path);
  Unlocked([&] {
    kit::OutputFiles files(overwrite ? kit::Existing::kReplace : kit::Existing::kRefuse);
    files.Add(name);
    files.Write(0, EncryptedBytes(document));
    files.Commit();
  });
}

SharedDocument WithKey(const Document& document, const py::bytes& key, const py::bytes& iv,
                       const py::object& key_file) {
  const SharedKey material = KeyOf(key, iv, key_file);
  return Unlocked([&] { return std::make_shared<Document>(document.content(), material); });
}

py::object ShowNameOf(const Document& document) {
  const zuna_toolkit::Summary summary = zuna_toolkit::SummariseWhole(document.content());
  return summary.show_name ? py::object(Text(*summary.show_name)) : py::none();
}

py::str ShownDocument(const Document& document) {
  return Text("<zuna.Document " + document.content().name() + ": " +
              zuna_toolkit::TypeText(document.content().type()) + ">");
}

void AddReading(py::module_& module, DocumentClass& document) {
  const py::bytes nothing("");
  module.def(
      "open", Open, py::arg("path_or_bytes"), py::kw_only(), py::arg("key") = nothing,
      py::arg("iv") = nothing, py::arg("key_file") = py::none(), py::arg("plain") = false,
      "Opens a show or log of any version: a path, or the bytes of a file. Its key and IV are given as "
      "bytes, "
      "or by the path of a key file; without any, they are empty. With plain=True, the file may also be "
      "without encryption. Raises Error.");
  document.def_static(
      "from_text", FromText, py::arg("text"), py::kw_only(), py::arg("key") = nothing,
      py::arg("iv") = nothing, py::arg("key_file") = py::none(),
      "The document of the text form that to_text() gives. The key is what it is written with. Raises Error "
      "with line and column.");
  document.def_static(
      "from_dict", FromDict, py::arg("dict"), py::kw_only(), py::arg("key") = nothing,
      py::arg("iv") = nothing, py::arg("key_file") = py::none(),
      "The document of a dict as to_dict() gives it. The key is what it is written with. Raises Error.");
}

}  // namespace

Document::Document(zuna_toolkit::Document document, SharedKey key)
    : document_(std::move(document)), key_(std::move(key)) {}

const zuna_toolkit::Document& Document::CurrentForm() const {
  if (!document_.type().is_legacy()) return document_;
  const std::lock_guard lock(mutex_);
  if (!current_form_) {
    current_form_ = std::make_unique<const zuna_toolkit::Document>(zuna_toolkit::CurrentForm(document_));
  }
  return *current_form_;
}

SharedDocument Document::With(zuna_toolkit::Document document) const {
  return std::make_shared<Document>(std::move(document), key_);
}

void AddDocuments(py::module_& module, DocumentClass& document) {
  AddReading(module, document);
  document
      .def_property_readonly(
          "kind", [](const Document& d) { return std::string(cmn::KindName(d.content().type().kind)); },
          "\"show\" or \"log\".")
      .def_property_readonly(
          "version", [](const Document& d) { return cmn::VersionText(d.content().type().version); },
          "Such as \"1.2\"; \"0.0\" for the legacy format.")
      .def_property_readonly(
          "name", [](const Document& d) { return Text(d.content().name()); },
          "What messages call it: its path.")
      .def_property_readonly("show_name", ShowNameOf, "The name of the show; None for a legacy show.")
      .def_property_readonly(
          "songs", [](const Document& d) { return Unlocked([&] { return SongsOf(d); }); },
          "The songs, in order. Those of a legacy show have the voices and the timeline that they get in a "
          "current "
          "version. Raises Error for a song that cannot be converted.")
      .def("with_messages", WithMessages, py::arg("song"), py::arg("voice"), py::arg("messages"),
           "A copy of a show with these messages in place of those of a voice: a structured array of "
           "zuna.message_type. Raises KeyError for a song or voice that is not there.")
      .def("with_key", WithKey, py::kw_only(), py::arg("key") = py::bytes(""), py::arg("iv") = py::bytes(""),
           py::arg("key_file") = py::none(),
           "The same document, which to_bytes() and save() encrypt under another key.")
      .def("to_text", TextOf, "The text form: JSON that people can read, compare and edit.")
      .def("to_dict", DictOf, "The text form as a dict.")
      .def(
          "to_bytes",
          [](const Document& d) { return BytesObject(Unlocked([&] { return EncryptedBytes(d); })); },
          "The encrypted bytes of its file, under the key that it was opened with, or that with_key() gave.")
      .def("save", Save, py::arg("path"), py::arg("overwrite") = false,
           "Writes the file, encrypted under the key that the document was opened with, in one step. Raises "
           "Error "
           "(\"output-exists\") where there is a file and overwrite is not true.")
      .def("__repr__", ShownDocument);
}

}  // namespace zuna_python
