#include "platform/core/json/document.h"

#include <charconv>
#include <string>

#include "platform/core/file/versions.h"

namespace zuna_core {

namespace {

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

std::string_view KindText(FileKind kind) { return kind == FileKind::kShow ? "showdata" : "logdata"; }

std::optional<cmn::FileVersion> ParseVersion(std::string_view text) {
  const std::optional<std::uint8_t> major = TakeNumber(text);
  if (!major || text.empty() || text.front() != '.') return std::nullopt;
  text.remove_prefix(1);
  const std::optional<std::uint8_t> minor = TakeNumber(text);
  if (!minor || !text.empty()) return std::nullopt;
  return cmn::FileVersion{*major, *minor};
}

const char* CheckKind(FileKind kind, std::string_view text) {
  if (text == KindText(kind)) return nullptr;
  if (kind == FileKind::kShow) {
    return text == KindText(FileKind::kLog) ? "this is a log, not a show" : "this is not a show";
  }
  return text == KindText(FileKind::kShow) ? "this is a show, not a log" : "this is not a log";
}

const char* CheckVersion(FileKind kind, std::string_view text) {
  const std::optional<cmn::FileVersion> version = ParseVersion(text);
  if (!version) return "a version such as \"2.0\" is due here";
  if (*version != kTextVersion) ThrowUnsupported(kind, *version, "a text document");
  return nullptr;
}

}  // namespace zuna_core
