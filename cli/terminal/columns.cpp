// The room that a text takes on a terminal.
#include "cli/terminal/columns.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <utf8proc.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "kit/utf8.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kWidestCluster = 2;
constexpr char32_t kEmojiSelector = 0xFE0F;  // asks for the coloured form of the character before it
constexpr char32_t kReplacementCharacter = 0xFFFD;
constexpr std::string_view kEllipsis = "\u2026";

struct Character {
  char32_t value;
  std::size_t length;  // bytes
};

Character FirstCharacter(std::string_view text) {
  const std::size_t length = kit::Utf8Length(text);
  if (length == 0) return {kReplacementCharacter, 1};
  return {kit::CodePoint(text.substr(0, length)), length};
}

std::size_t ColumnsOf(char32_t character) {
  if (character == kEmojiSelector) return 1;  // The character before it has one without it.
  return static_cast<std::size_t>(utf8proc_charwidth(static_cast<utf8proc_int32_t>(character)));
}

struct Cluster {
  std::size_t length;  // bytes
  std::size_t columns;
};

/// The grapheme cluster at the front of `text`, which is not empty.
Cluster FirstCluster(std::string_view text) {
  Character last = FirstCharacter(text);
  Cluster cluster{last.length, ColumnsOf(last.value)};
  utf8proc_int32_t state = 0;
  while (cluster.length < text.size()) {
    const Character next = FirstCharacter(text.substr(cluster.length));
    if (utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(last.value),
                                         static_cast<utf8proc_int32_t>(next.value), &state)) {
      break;
    }
    cluster.length += next.length;
    cluster.columns += ColumnsOf(next.value);
    last = next;
  }
  cluster.columns = std::min(cluster.columns, kWidestCluster);
  return cluster;
}

/// The number of bytes of those first clusters of `text` that take at most `columns` together.
std::size_t LengthWithin(std::string_view text, std::size_t columns) {
  std::size_t length = 0;
  while (length < text.size()) {
    const Cluster next = FirstCluster(text.substr(length));
    if (next.columns > columns) break;
    columns -= next.columns;
    length += next.length;
  }
  return length;
}

}  // namespace

std::size_t Columns(std::string_view text) {
  std::size_t columns = 0;
  while (!text.empty()) {
    const Cluster cluster = FirstCluster(text);
    columns += cluster.columns;
    text.remove_prefix(cluster.length);
  }
  return columns;
}

std::string CutToColumns(std::string_view text, std::size_t columns) {
  if (LengthWithin(text, columns) == text.size()) return std::string(text);
  return std::string(text.substr(0, LengthWithin(text, columns - 1))) += kEllipsis;
}

std::optional<std::size_t> TerminalColumns(int descriptor) {
  if (isatty(descriptor) == 0) return std::nullopt;
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  const char* variable = std::getenv("COLUMNS");
  const std::string_view text = variable == nullptr ? "" : variable;
  std::size_t columns = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), columns);
  if (error != std::errc() || end != text.data() + text.size() || columns == 0) return std::nullopt;
  return columns;
}

}  // namespace zuna_cli
