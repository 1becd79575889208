// Aligned columns.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zuna_cli {

/// The columns of a table, which stand to the left ('<') or to the right ('>'). Holds no rows: there may be
/// many, and each is made twice instead, to measure it and to show it.
class Table {
 public:
  using Row = std::vector<std::string>;  ///< printable texts, one for each column

  /// `alignment` has a character for each column. Rows are made to fit into `width` columns of a terminal,
  /// where it is given.
  explicit Table(std::string alignment, std::optional<std::size_t> width = std::nullopt);

  /// Widens the columns to the texts of a row, each to 40 columns of a terminal at most. Without a width, a
  /// longer text widens nothing: it takes the room that it needs in its own row, so that one long name does
  /// not fill all rows with blanks.
  void Fit(const Row& row);

  /// A row with two blanks before every column and a line break at its end. In a table that is too wide, the
  /// texts of its widest columns to the left are cut; those to the right are numbers and stay.
  std::string Line(const Row& row) const;

 private:
  std::size_t Whole() const;
  void Narrow();

  std::string alignment_;
  std::optional<std::size_t> width_;
  std::vector<std::size_t> widths_;
};

}  // namespace zuna_cli
