#include "cli/base/version_text.h"

#include <charconv>

namespace zuna_cli {

namespace {

std::optional<std::uint8_t> ParseByte(std::string_view text) {
  std::uint8_t value = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end) return std::nullopt;
  return value;
}

}  // namespace

std::optional<cmn::FileVersion> ParseVersion(std::string_view text) {
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) return std::nullopt;
  const auto major = ParseByte(text.substr(0, point));
  const auto minor = ParseByte(text.substr(point + 1));
  if (!major || !minor) return std::nullopt;
  return cmn::FileVersion{*major, *minor};
}

std::string WritableVersionsText(const cmn::FileVersion& first) {
  std::string text;
  for (const cmn::FileVersion& version : kWritableVersions) {
    if (version < first) continue;
    if (!text.empty()) text += version == kWritableVersions.back() ? " or " : ", ";
    text += VersionText(version);
  }
  return text + " (text)";  // The last one is the text form.
}

std::string VersionText(const cmn::FileVersion& version) {
  return std::to_string(version.major) + '.' + std::to_string(version.minor);
}

}  // namespace zuna_cli
