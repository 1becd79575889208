#include "platform/core/json/document.h"

#include <charconv>
#include <string>

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

}  // namespace zuna_core
