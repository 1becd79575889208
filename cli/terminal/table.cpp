// Aligned columns.
#include "cli/terminal/table.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace zuna_cli {

namespace {

/// The number of characters, for alignment.
std::size_t Width(std::string_view text) {
  const auto begins = [](char byte) { return (static_cast<std::uint8_t>(byte) & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

}  // namespace

Table::Table(std::string alignment, const std::vector<std::string>& titles)
    : alignment_(std::move(alignment)), rows_{titles} {}

std::string Table::ToString() const {
  std::vector<std::size_t> widths(alignment_.size());
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
  }
  std::string text;
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const std::string padding(widths[i] - Width(row[i]), ' ');
      text += "  " + (alignment_[i] == '<' ? row[i] + padding : padding + row[i]);
    }
    text.erase(text.find_last_not_of(' ') + 1) += '\n';
  }
  return text;
}

}  // namespace zuna_cli
