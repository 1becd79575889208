// The header of binary files of current versions, which may be damaged (docs/format-1.md).
#include "toolkit/rescue/internal/current_header.h"

#include <sstream>

#include "cmn/version_probe.h"
#include "toolkit/document/document.h"
#include "toolkit/rescue/internal/record_bytes.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kMagicSize = 4;  // at the front, before the size
constexpr std::size_t kVersionOffset = 8;
constexpr std::size_t kBytesThatTell = 3;  // of a magic

}  // namespace

std::optional<cmn::FileKind> BinaryKind(std::string_view plaintext) {
  if (plaintext.size() < kBinaryHeaderSize) return std::nullopt;
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    const std::string_view magic = cmn::BinaryMagic(kind);
    std::size_t equal = 0;
    for (std::size_t i = 0; i < kMagicSize; ++i) equal += static_cast<std::size_t>(magic[i] == plaintext[i]);
    if (equal >= kBytesThatTell) return kind;
  }
  return std::nullopt;
}

std::uint64_t StatedSize(std::string_view plaintext) {
  return std::uint64_t{RecordCursor(plaintext, kMagicSize).Number(4)} + kVersionOffset;
}

cmn::FileVersion StatedVersion(std::string_view plaintext) {
  return {static_cast<std::uint8_t>(plaintext[kVersionOffset]),
          static_cast<std::uint8_t>(plaintext[kVersionOffset + 1])};
}

std::optional<cmn::FileVersion> UnknownVersion(std::string_view plaintext) {
  constexpr std::size_t kProbe = 65536;  // bytes, among which a text form states its version
  std::istringstream stream{std::string(plaintext.substr(0, kProbe))};
  const cmn::FileVersion show = cmn::get_showdata_version(stream);
  const cmn::FileVersion version = show != kLegacyVersion ? show : cmn::get_logdata_version(stream);
  const cmn::FileKind kind = show != kLegacyVersion ? cmn::FileKind::kShow : cmn::FileKind::kLog;
  const bool is_known = version == kLegacyVersion || cmn::IsSupported(kind, version);
  return is_known ? std::nullopt : std::optional(version);
}

bool HasChecksum(cmn::FileVersion version) { return version.major == 1 && version.minor > 0; }

std::string HeaderBytes(cmn::FileKind kind, cmn::FileVersion version, std::size_t file_size) {
  return std::string(cmn::BinaryMagic(kind)) + WordBytes(file_size - kVersionOffset) +
         static_cast<char>(version.major) + static_cast<char>(version.minor);
}

}  // namespace zuna_toolkit
