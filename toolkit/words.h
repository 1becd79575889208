// Small helpers for texts: counts with their nouns, lists, bytes as text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/api.h"
#include "kit/format.h"
#include "kit/utf8.h"

namespace zuna_toolkit {

/// "1 voice", "2 voices".
ZUNA_API std::string Counted(std::size_t count, const std::string& one, const std::string& many);

/// `bytes` as text.
inline std::string_view AsText(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// `text` without the byte order mark that some editors put before it.
inline std::string_view WithoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

/// The number of a song for messages: of a damaged one, which may have 255 bytes of anything, the beginning.
/// Control characters become "\xNN": a NUL would end a message.
inline std::string NumberText(const std::string& number) {
  constexpr std::size_t kMost = 40;  // bytes
  std::string text;
  for (const char c : kit::CutUtf8(number, kMost)) {
    const auto byte = static_cast<unsigned char>(c);
    text +=
        byte < ' ' || byte == 0x7F ? kit::format("\\x%02x", static_cast<unsigned>(byte)) : std::string(1, c);
  }
  return number.size() <= kMost ? text : text + "...";
}

/// "TEXT [CODE]": how a line ends whose code `explain` tells more about.
inline std::string WithCode(std::string_view text, std::string_view code) {
  return std::string(text).append(" [").append(code).append("]");
}

/// Adds `text` to the end of `list`, as in "2, 3".
ZUNA_API void AppendListed(std::string& list, const std::string& text);

/// `text` with the letters A to Z in lower case.
ZUNA_API std::string LowerCase(std::string text);

/// Counts things by kind, as "2 system-exclusive messages, 14 lyrics".
class ZUNA_API Tally {
 public:
  /// Adds `count` things of a kind.
  void Add(const std::string& one, const std::string& many, std::size_t count = 1);

  /// Whether nothing was added.
  bool empty() const { return kinds_.empty(); }

  /// All of them as a text, such as "17 bar labels, 2 page numbers".
  std::string ToString() const;

 private:
  /// Some things of one kind.
  struct Kind {
    std::string one;    ///< what one of them is called
    std::string many;   ///< what several of them are called
    std::size_t count;  ///< how many there are
  };

  std::vector<Kind> kinds_;  ///< in the order of their first appearance
};

}  // namespace zuna_toolkit
