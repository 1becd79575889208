// The entry points of libzuna_format_converter by their own names.
#include "cmn/file_version.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "python/src/arguments.h"
#include "python/src/document.h"
#include "python/src/errors.h"

namespace zuna_python {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Calls an entry point on files, while other threads of Python run.
template <typename Work>
std::string OnFiles(const Work& work) {
  return Unlocked([&] { return OfConverter(work); });
}

/// Calls an entry point in memory, while other threads of Python run.
template <typename Work>
py::bytes InMemory(const Work& work) {
  return BytesObject(Unlocked([&] { return OfConverter(work); }));
}

using UpOnFiles = std::string (*)(const std::string&, const std::string&, const std::string&,
                                  const cmn::FileVersion&, const CipherKey&);
using DownOnFiles = std::string (*)(const std::string&, const std::string&, const CipherKey&);
using ConvertOnFiles = std::string (*)(const std::string&, const std::string&, const cmn::FileVersion&,
                                       const CipherKey&);
using DownInMemory = Bytes (*)(const Bytes&, const Bytes&, const Bytes&);
using ConvertInMemory = Bytes (*)(const Bytes&, const cmn::FileVersion&, const Bytes&, const Bytes&);

/// Defines entry points of these types, with Python's arguments.
class EntryPoints {
 public:
  explicit EntryPoints(py::module_ module) : module_(std::move(module)) {}

  void Add(const char* name, const char* companion, const char* text, UpOnFiles function) {
    module_.def(
        name,
        [function](const py::object& input, const py::object& output, const py::object& other,
                   const std::string& version, const py::bytes& key, const py::bytes& iv) {
          return Text(OnFiles([&, in = PathOf(input), out = PathOf(output), with = PathOf(other),
                               to = VersionOf(version), material = CipherKey{CopyOf(key), CopyOf(iv)}] {
            return function(in, out, with, to, material);
          }));
        },
        py::arg("input"), py::arg("output"), py::arg(companion), py::arg("version"), py::arg("key"),
        py::arg("iv"), text);
  }

  void Add(const char* name, const char* text, DownOnFiles function) {
    module_.def(
        name,
        [function](const py::object& input, const py::object& output, const py::bytes& key,
                   const py::bytes& iv) {
          return Text(OnFiles(
              [&, in = PathOf(input), out = PathOf(output), material = CipherKey{CopyOf(key), CopyOf(iv)}] {
                return function(in, out, material);
              }));
        },
        py::arg("input"), py::arg("output"), py::arg("key"), py::arg("iv"), text);
  }

  void Add(const char* name, const char* text, ConvertOnFiles function) {
    module_.def(
        name,
        [function](const py::object& input, const py::object& output, const std::string& version,
                   const py::bytes& key, const py::bytes& iv) {
          return Text(OnFiles(
              [&, in = PathOf(input), out = PathOf(output), to = VersionOf(version),
               material = CipherKey{CopyOf(key), CopyOf(iv)}] { return function(in, out, to, material); }));
        },
        py::arg("input"), py::arg("output"), py::arg("version"), py::arg("key"), py::arg("iv"), text);
  }

  void Add(const char* name, const char* text, DownInMemory function) {
    module_.def(
        name,
        [function](const py::bytes& data, const py::bytes& key, const py::bytes& iv) {
          return InMemory(
              [&, bytes = CopyOf(data), k = CopyOf(key), i = CopyOf(iv)] { return function(bytes, k, i); });
        },
        py::arg("data"), py::arg("key"), py::arg("iv"), text);
  }

  void Add(const char* name, const char* text, ConvertInMemory function) {
    module_.def(
        name,
        [function](const py::bytes& data, const std::string& version, const py::bytes& key,
                   const py::bytes& iv) {
          return InMemory([&, bytes = CopyOf(data), to = VersionOf(version), k = CopyOf(key),
                           i = CopyOf(iv)] { return function(bytes, to, k, i); });
        },
        py::arg("data"), py::arg("version"), py::arg("key"), py::arg("iv"), text);
  }

  py::module_& module() { return module_; }

 private:
  py::module_ module_;
};

void CopyAttaccasAndFermatas(const py::object& source, const py::object& destination, const py::bytes& key,
                             const py::bytes& iv) {
  const std::string from = PathOf(source);
  const std::string to = PathOf(destination);
  const CipherKey material{CopyOf(key), CopyOf(iv)};
  Unlocked([&] { OfConverter([&] { copy_attaccas_and_fermatas(from, to, material); }); });
}

py::bytes CopyAttaccasAndFermatasInMemory(const py::bytes& source, const py::bytes& destination,
                                          const py::bytes& key, const py::bytes& iv) {
  return InMemory([from = CopyOf(source), to = CopyOf(destination), k = CopyOf(key), i = CopyOf(iv)] {
    return copy_attaccas_and_fermatas_vector(from, to, k, i);
  });
}

py::bytes LogUpInMemory(const py::bytes& data, const py::bytes& show_data, const std::string& version,
                        const py::bytes& key, const py::bytes& iv) {
  return InMemory([bytes = CopyOf(data), show = CopyOf(show_data), to = VersionOf(version), k = CopyOf(key),
                   i = CopyOf(iv)] { return logdata_up_vector(bytes, show, to, k, i); });
}

}  // namespace

void AddEntryPoints(py::module_& module) {
  EntryPoints points(module.def_submodule(
      "format_converter",
      "The entry points of libzuna_format_converter. Those that end in _vector take and return encrypted "
      "bytes; the "
      "others take paths, replace the output, and return its path. Errors are zuna.Error."));
  points.Add(
      "showdata_up", "log_path",
      "Brings the legacy show up. The log is a legacy log without encryption, which tells the show's name.",
      showdata_up);
  points.Add("showdata_down", "Brings the current show down to format 0.0.", showdata_down);
  points.Add("showdata_down_vector", "The same in memory.", showdata_down_vector);
  points.Add("showdata_converter", "Brings the current show to another current version.", showdata_converter);
  points.Add("showdata_converter_vector", "The same in memory.", showdata_converter_vector);
  points.Add(
      "logdata_up", "show_path",
      "Brings the legacy log up. The show is a legacy show without encryption, which tells the divisions.",
      logdata_up);
  points.module().def("logdata_up_vector", LogUpInMemory, py::arg("data"), py::arg("show_data"),
                      py::arg("version"), py::arg("key"), py::arg("iv"),
                      "The same in memory. The show is encrypted.");
  points.Add("logdata_down", "Brings the current log down to format 0.0.", logdata_down);
  points.Add("logdata_down_vector", "The same in memory.", logdata_down_vector);
  points.Add("logdata_converter", "Brings the current log to another current version.", logdata_converter);
  points.Add("logdata_converter_vector", "The same in memory.", logdata_converter_vector);
  points.module()
      .def("copy_attaccas_and_fermatas", CopyAttaccasAndFermatas, py::arg("source_path"),
           py::arg("destination_path"), py::arg("key"), py::arg("iv"),
           "Copies the attaccas and fermatas of a current log into another one.")
      .def("copy_attaccas_and_fermatas_vector", CopyAttaccasAndFermatasInMemory, py::arg("source"),
           py::arg("destination"), py::arg("key"), py::arg("iv"),
           "The same in memory. Returns the new destination.");
}

}  // namespace zuna_python
