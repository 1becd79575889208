// The versions of current files, and how they are stated (docs/format-1.md, docs/format-2.md).

#include "platform/core/file/versions.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "cmn/data_error.h"
#include "kit/format.h"

namespace zuna_core {

namespace {

const VersionTraits& TraitsOf(cmn::FileVersion version) {
  for (const VersionTraits& traits : kVersions) {
    if (traits.version == version) return traits;
  }
  throw std::invalid_argument("there is no file version " + cmn::VersionText(version));
}

/// The versions of files of this kind, binary ones or text: "1.1 and 1.2".
std::string VersionList(FileKind kind, bool binary) {
  std::vector<std::string> texts;
  for (const cmn::FileVersion version : cmn::SupportedVersions(kind)) {
    if (IsBinary(kind, version) == binary) texts.push_back(cmn::VersionText(version));
  }
  std::string list;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i != 0) list += i + 1 == texts.size() ? " and " : ", ";
    list += texts[i];
  }
  return list;
}

}  // namespace

Layout LayoutOf(cmn::FileVersion version) { return TraitsOf(version).layout; }

bool HasChecksum(cmn::FileVersion version) { return TraitsOf(version).checksum; }

bool IsBinary(FileKind kind, cmn::FileVersion version) {
  return cmn::IsSupported(kind, version) && LayoutOf(version) != Layout::kText;
}

void ThrowNotBinary(cmn::FileVersion version) {
  throw std::invalid_argument("file version " + cmn::VersionText(version) + " is not binary");
}

void ThrowUnsupported(FileKind kind, cmn::FileVersion version, const char* where,
                      cmn::DataError::Parts place) {
  const bool show = kind == FileKind::kShow;
  place.problem = kit::format("%s file version %s is not supported %s", show ? "Show" : "Log",
                              cmn::VersionText(version).c_str(), where);
  place.remedy = kit::format("the supported versions are %s (binary) and %s (text)",
                             VersionList(kind, true).c_str(), VersionList(kind, false).c_str());
  throw cmn::UnsupportedVersionError(std::move(place));
}

const char* CheckKind(FileKind kind, std::string_view text) {
  if (text == cmn::KindText(kind)) return nullptr;
  if (kind == FileKind::kShow) {
    return text == cmn::KindText(FileKind::kLog) ? "this is a log, not a show" : "this is not a show";
  }
  return text == cmn::KindText(FileKind::kShow) ? "this is a show, not a log" : "this is not a log";
}

}  // namespace zuna_core
