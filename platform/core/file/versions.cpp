#include "platform/core/file/versions.h"

#include "cmn/data_error.h"
#include "kit/format.h"

namespace zuna_core {

bool IsBinary(FileKind kind, cmn::FileVersion version) {
  // Logs came when there was a checksum already.
  if (version == kFixedVersion) return kind == FileKind::kShow;
  return version == kCheckedVersion || version == kCompactVersion;
}

bool IsSupported(FileKind kind, cmn::FileVersion version) {
  return version == kTextVersion || IsBinary(kind, version);
}

Checksum ChecksumOf(cmn::FileVersion version) {
  return version == kFixedVersion ? Checksum::kNone : Checksum::kCrc32;
}

void ThrowUnsupported(FileKind kind, cmn::FileVersion version, const char* form) {
  const bool show = kind == FileKind::kShow;
  throw cmn::UnsupportedVersionError(
      kit::format("%s file version %s is not supported as %s", show ? "Show" : "Log",
                  cmn::VersionText(version).c_str(), form),
      kit::format("the supported versions are %s (binary) and 2.0 (text)",
                  show ? "1.0, 1.1 and 1.2" : "1.1 and 1.2"));
}

}  // namespace zuna_core
