// Aligned columns.
#include "cli/terminal/table.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace zuna_cli {

namespace {

constexpr std::size_t kWidest = 40;  // characters of a column

/// The number of characters, for alignment.
std::size_t Width(std::string_view text) {
  const auto begins = [](char byte) { return (static_cast<std::uint8_t>(byte) & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

}  // namespace

void Table::Fit(const Row& row) {
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const std::size_t width = Width(row[i]);
    if (width <= kWidest) widths_[i] = std::max(widths_[i], width);
  }
}

std::string Table::Line(const Row& row) const {
  std::string text;
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const std::string padding(widths_[i] - std::min(widths_[i], Width(row[i])), ' ');
    text += "  " + (alignment_[i] == '<' ? row[i] + padding : padding + row[i]);
  }
  text.erase(text.find_last_not_of(' ') + 1) += '\n';
  return text;
}

}  // namespace zuna_cli
