// What Python gives for files, texts and versions, and back.
#include "python/src/arguments.h"

#include <algorithm>

#include "cmn/file_format.h"
#include "kit/file.h"
#include "kit/wipe.h"
#include "toolkit/error.h"

namespace zuna_python {

namespace {

constexpr const char* kMemory = "memory";
constexpr std::size_t kLongestKeyFile = 65536;  // bytes

std::vector<std::uint8_t> BytesOfBuffer(const py::buffer& buffer) {
  const py::buffer_info info = buffer.request();
  const auto* bytes = static_cast<const std::uint8_t*>(info.ptr);
  if (info.ndim != 1 || (info.size > 1 && info.strides[0] != info.itemsize)) {
    throw py::type_error("the bytes of a file are one after another");
  }
  return {bytes, bytes + info.size * info.itemsize};
}

SharedKey KeyOfFile(const std::string& path) {
  const kit::FileBytes text = Unlocked([&] { return kit::ReadWholeFile(path, kLongestKeyFile); });
  const std::string_view view(reinterpret_cast<const char*>(text.bytes().data()), text.size);
  auto key = std::make_shared<const zuna_toolkit::SecretKey>(zuna_toolkit::ParseKeyFile(view, path, false));
  kit::Wipe(text.bytes());
  return key;
}

}  // namespace

py::str Text(std::string_view text) {
  return py::reinterpret_steal<py::str>(
      PyUnicode_DecodeUTF8(text.data(), static_cast<py::ssize_t>(text.size()), "surrogateescape"));
}

py::object TextOrNone(std::string_view text) {
  if (text.empty()) return py::none();
  return Text(text);
}

std::string BytesOf(const py::str& text) {
  const auto bytes =
      py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
  if (!bytes) throw py::error_already_set();
  return bytes;
}

std::string PathOf(const py::object& path) {
  const py::object encoded = py::module_::import("os").attr("fsencode")(path);
  return encoded.cast<std::string>();
}

Source SourceOf(const py::object& path_or_bytes) {
  if (PyObject_CheckBuffer(path_or_bytes.ptr()) != 0) {
    return {kMemory, BytesOfBuffer(path_or_bytes.cast<py::buffer>())};
  }
  return {PathOf(path_or_bytes), std::nullopt};
}

SharedKey KeyOf(const py::bytes& key, const py::bytes& iv, const py::object& key_file) {
  CipherKey material{CopyOf(key), CopyOf(iv)};
  if (key_file.is_none()) return std::make_shared<const zuna_toolkit::SecretKey>(std::move(material));
  if (!material.key.empty() || !material.iv.empty()) throw py::value_error("give key and iv, or key_file");
  return KeyOfFile(PathOf(key_file));
}

cmn::FileVersion VersionOf(const std::string& text) {
  const std::optional<cmn::FileVersion> version = cmn::ParseVersion(text);
  if (version) return *version;
  throw zuna_toolkit::Error(zuna_toolkit::ErrorCode::kNoSuchVersion, "version",
                            "there is no version \"" + text + '"', "give 0.0, 1.0, 1.1, 1.2 or 2.0");
}

std::vector<std::uint8_t> CopyOf(const py::bytes& bytes) {
  const std::string_view view = bytes;
  return {view.begin(), view.end()};
}

py::bytes BytesObject(const std::vector<std::uint8_t>& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace zuna_python
