#include "platform/core/json/document.h"

#include <optional>
#include <string>

#include "platform/core/file/versions.h"

namespace zuna_core {

std::string_view KindText(FileKind kind) { return kind == FileKind::kShow ? "showdata" : "logdata"; }

const char* CheckKind(FileKind kind, std::string_view text) {
  if (text == KindText(kind)) return nullptr;
  if (kind == FileKind::kShow) {
    return text == KindText(FileKind::kLog) ? "this is a log, not a show" : "this is not a show";
  }
  return text == KindText(FileKind::kShow) ? "this is a show, not a log" : "this is not a log";
}

const char* CheckVersion(FileKind kind, std::string_view text) {
  const std::optional<cmn::FileVersion> version = cmn::ParseVersion(text);
  if (!version) return "a version such as \"2.0\" is due here";
  if (*version != kTextVersion) ThrowUnsupported(kind, *version, "a text document");
  return nullptr;
}

}  // namespace zuna_core
