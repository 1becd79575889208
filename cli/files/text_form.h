#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace zuna_cli {

/// As many bytes as BeginsLikeTextForm has to see, unless somebody put a page of blanks in front.
constexpr std::size_t kTextFormProbe = 4096;

/// What is wrong where BeginsLikeTextForm holds and the first byte is not "{".
constexpr const char* kNotAtStart =
    "a byte order mark or blanks stand before the text (at byte 0); remove them, so that \"{\" comes first";

/// `bytes` as text.
inline std::string_view AsText(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Whether `text` is meant to be a text form: it begins with "{", maybe after a byte order mark and blanks.
inline bool BeginsLikeTextForm(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && text[first] == '{';
}

}  // namespace zuna_cli
