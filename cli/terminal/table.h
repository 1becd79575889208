// Aligned columns.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace zuna_cli {

/// The columns of a table, which stand to the left ('<') or to the right ('>'). Holds no rows: there may be
/// many, and each is made twice instead, to measure it and to show it.
class Table {
 public:
  using Row = std::vector<std::string>;  ///< printable texts, one for each column

  /// `alignment` has a character for each column.
  explicit Table(std::string alignment) : alignment_(std::move(alignment)), widths_(alignment_.size()) {}

  /// Widens the columns to the texts of a row. A text of more than 40 characters widens nothing: it takes the
  /// room that it needs in its own row, so that one long name does not fill all rows with blanks.
  void Fit(const Row& row);

  /// A row with two blanks before every column and a line break at its end.
  std::string Line(const Row& row) const;

 private:
  std::string alignment_;
  std::vector<std::size_t> widths_;
};

}  // namespace zuna_cli
