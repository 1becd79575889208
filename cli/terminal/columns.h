// The room that a text takes on a terminal.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zuna_cli {

/// The number of columns that `text`, one line, takes on a terminal: two for a wide East Asian character and
/// for an emoji, none for a combining mark. What a reader sees as one character (a grapheme cluster, Unicode
/// Standard Annex #29) takes two at most. A byte that is no UTF-8 takes one.
std::size_t Columns(std::string_view text);

/// `text` where it takes at most `columns`, which are not 0; otherwise as many of its first grapheme clusters
/// as leave room for a "…" behind them.
std::string CutToColumns(std::string_view text, std::size_t columns);

/// The number of columns of the terminal that `descriptor` is; nothing where it is none, and where neither
/// the terminal nor COLUMNS tells.
std::optional<std::size_t> TerminalColumns(int descriptor);

}  // namespace zuna_cli
