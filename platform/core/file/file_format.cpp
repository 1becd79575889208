// Kinds, versions and magic bytes of current files (docs/format-1.md, docs/format-2.md).

#include "cmn/file_format.h"

#include <array>
#include <charconv>
#include <cstddef>

#include "platform/core/file/versions.h"

namespace cmn {

namespace {

constexpr bool Holds(const zuna_core::VersionTraits& traits, FileKind kind) {
  return kind == FileKind::kShow ? traits.in_shows : traits.in_logs;
}

/// The number of the versions that files of this kind have.
constexpr std::size_t CountVersions(FileKind kind) {
  std::size_t count = 0;
  for (const zuna_core::VersionTraits& traits : zuna_core::kVersions) {
    if (Holds(traits, kind)) ++count;
  }
  return count;
}

template <FileKind kKind>
constexpr auto VersionsOf() {
  std::array<FileVersion, CountVersions(kKind)> versions;
  std::size_t count = 0;
  for (const zuna_core::VersionTraits& traits : zuna_core::kVersions) {
    if (Holds(traits, kKind)) versions[count++] = traits.version;
  }
  return versions;
}

constexpr auto kShowVersions = VersionsOf<FileKind::kShow>();
constexpr auto kLogVersions = VersionsOf<FileKind::kLog>();

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

std::string_view KindText(FileKind kind) { return kind == FileKind::kShow ? "showdata" : "logdata"; }

std::string_view BinaryMagic(FileKind kind) {
  using namespace std::string_view_literals;
  return kind == FileKind::kShow ? "\0ZSH"sv : "\0ZLG"sv;
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
