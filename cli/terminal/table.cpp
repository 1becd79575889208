// Aligned columns.
#include "cli/terminal/table.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

#include "cli/terminal/columns.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kGap = "  ";
constexpr std::size_t kWidest = 40;    // columns of a terminal
constexpr std::size_t kNarrowest = 8;  // texts are not cut below this

}  // namespace

Table::Table(std::string alignment, std::optional<std::size_t> width)
    : alignment_(std::move(alignment)), width_(width), widths_(alignment_.size()) {}

void Table::Fit(const Row& row) {
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const std::size_t columns = Columns(row[i]);
    if (columns > kWidest && !width_) continue;
    widths_[i] = std::max(widths_[i], std::min(columns, kWidest));
  }
  Narrow();
}

std::string Table::Line(const Row& row) const {
  std::size_t spare = width_ ? *width_ - std::min(*width_, Whole()) : std::numeric_limits<std::size_t>::max();
  std::string text;
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const std::size_t columns = Columns(row[i]);
    const bool is_text = alignment_[i] == '<';
    const std::size_t more = std::min(columns - std::min(columns, widths_[i]), spare);
    spare -= more;
    const std::string shown = is_text ? CutToColumns(row[i], widths_[i] + more) : row[i];
    const std::string padding(widths_[i] - std::min(widths_[i], Columns(shown)), ' ');
    (text += kGap) += is_text ? shown + padding : padding + shown;
  }
  text.erase(text.find_last_not_of(' ') + 1) += '\n';
  return text;
}

/// The width of a row without texts that are longer than their columns.
std::size_t Table::Whole() const {
  return std::accumulate(widths_.begin(), widths_.end(), widths_.size() * kGap.size());
}

/// Takes from the widest texts what the table is too wide.
void Table::Narrow() {
  while (width_ && Whole() > *width_) {
    std::size_t* widest = nullptr;
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      if (alignment_[i] == '<' && (widest == nullptr || widths_[i] > *widest)) widest = &widths_[i];
    }
    if (widest == nullptr || *widest <= kNarrowest) return;
    --*widest;
  }
}

}  // namespace zuna_cli
