// What Python gives for files, texts and versions, and back.
#pragma once

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cmn/file_version.h"
#include "toolkit/key_file.h"

namespace zuna_python {

namespace py = pybind11;

/// Bytes of `text` that are no UTF-8 become lone surrogates, as in Python's names of files.
py::str Text(std::string_view text);

/// None for an empty text.
py::object TextOrNone(std::string_view text);

/// The bytes that Text() made `text` of.
std::string BytesOf(const py::str& text);

/// A file as a caller gives it.
struct Source {
  std::string name;                                ///< what messages call it
  std::optional<std::vector<std::uint8_t>> bytes;  ///< none where the file at `name` is to be read
};

/// A path (str or os.PathLike) or bytes. Throws TypeError for anything else.
Source SourceOf(const py::object& path_or_bytes);

/// The path of a str or os.PathLike.
std::string PathOf(const py::object& path);

/// Key material that is shared by the documents that come of one file.
using SharedKey = std::shared_ptr<const zuna_toolkit::SecretKey>;

/// The key material of a call: `key` and `iv`, or those of the key file. Throws ValueError where both are
/// given, and what ParseKeyFile() throws.
SharedKey KeyOf(const py::bytes& key, const py::bytes& iv, const py::object& key_file);

/// "1.2" as a version. Throws zuna_toolkit::Error (kNoSuchVersion) for other texts.
cmn::FileVersion VersionOf(const std::string& text);

/// The bytes of a Python bytes object.
std::vector<std::uint8_t> CopyOf(const py::bytes& bytes);

/// A Python bytes object of these bytes.
py::bytes BytesObject(const std::vector<std::uint8_t>& bytes);

/// Returns what `work` returns, while other threads of Python run. `work` touches nothing of Python.
template <typename Work>
auto Unlocked(Work work) {
  const py::gil_scoped_release release;
  return work();
}

}  // namespace zuna_python
