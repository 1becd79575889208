// Kinds, versions and magic bytes of current files (docs/format-1.md, docs/format-2.md).

#include "cmn/file_format.h"

#include <array>
#include <charconv>

namespace cmn {

namespace {

constexpr std::size_t kMagicSize = 4;

constexpr std::array<FileVersion, 4> kShowVersions{{{1, 0}, {1, 1}, {1, 2}, {2, 0}}};
constexpr std::array<FileVersion, 3> kLogVersions{{{1, 1}, {1, 2}, {2, 0}}};

/// Takes a number from the front of `text`.
std::optional<std::uint8_t> TakeNumber(std::string_view& text) {
  std::uint8_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const auto length = static_cast<std::size_t>(stop - text.data());
  if (error != std::errc() || (length > 1 && text.front() == '0')) return std::nullopt;
  text.remove_prefix(length);
  return number;
}

}  // namespace

std::string_view KindName(FileKind kind) { return kind == FileKind::kShow ? "show" : "log"; }

std::string_view BinaryMagic(FileKind kind) {
  return {kind == FileKind::kShow ? "\0ZSH" : "\0ZLG", kMagicSize};
}

std::span<const FileVersion> SupportedVersions(FileKind kind) {
  if (kind == FileKind::kShow) return kShowVersions;
  return kLogVersions;
}

std::optional<FileVersion> ParseVersion(std::string_view text) {
  const std::optional<std::uint8_t> major = TakeNumber(text);
  if (!major || text.empty() || text.front() != '.') return std::nullopt;
  text.remove_prefix(1);
  const std::optional<std::uint8_t> minor = TakeNumber(text);
  if (!minor || !text.empty()) return std::nullopt;
  return FileVersion{*major, *minor};
}

std::string VersionText(FileVersion version) {
  return std::to_string(version.major) + '.' + std::to_string(version.minor);
}

}  // namespace cmn
