// A show or a log of any version in memory.
#include "toolkit/document/document.h"

#include "toolkit/error.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

cmn::FileKind KindOf(const Document::Model& model) {
  const bool log = std::holds_alternative<LegacyLog>(model) || std::holds_alternative<CL::ChangeLog>(model);
  return log ? cmn::FileKind::kLog : cmn::FileKind::kShow;
}

bool IsLegacy(const Document::Model& model) {
  return std::holds_alternative<LegacyShow>(model) || std::holds_alternative<LegacyLog>(model);
}

std::string SupportedText(cmn::FileKind kind) {
  std::string text;
  for (const cmn::FileVersion& version : cmn::SupportedVersions(kind)) {
    AppendListed(text, cmn::VersionText(version));
  }
  return text;
}

void RequireVersion(const Document::Model& model, cmn::FileVersion version, const std::string& name) {
  const cmn::FileKind kind = KindOf(model);
  const bool fits = IsLegacy(model) ? version == kLegacyVersion : cmn::IsSupported(kind, version);
  if (fits) return;
  throw Error(ErrorCode::kNoSuchVersion, name,
              std::string(cmn::KindName(kind)) + "s have no version " + cmn::VersionText(version),
              "use one of " + SupportedText(kind));
}

}  // namespace

std::string TypeText(const FileType& type) {
  return "a " + std::string(cmn::KindName(type.kind)) + " of version " + cmn::VersionText(type.version);
}

void RequireLegacy(const FileType& type, const std::string& name) {
  if (type.is_legacy()) return;
  throw Error(ErrorCode::kLegacyWanted, name, "is " + TypeText(type) + ", not 0.0", "use convert or down");
}

void RequireCurrent(const FileType& type, const std::string& name) {
  if (!type.is_legacy()) return;
  throw Error(ErrorCode::kCurrentWanted, name, "is " + TypeText(type) + ", not a current one",
              "use up first");
}

void RequireShow(const FileType& type, const std::string& name) {
  if (!type.is_log()) return;
  throw Error(ErrorCode::kWrongKind, name, "is a log, and this command takes shows", "give a show");
}

Document::Document(Model model, cmn::FileVersion version, std::string name)
    : type_{KindOf(model), version}, name_(std::move(name)), model_(std::move(model)) {
  RequireVersion(model_, version, name_);
}

}  // namespace zuna_toolkit
