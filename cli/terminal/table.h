// Aligned columns.
#pragma once

#include <string>
#include <vector>

namespace zuna_cli {

/// A table whose columns stand to the left ('<') or to the right ('>').
class Table {
 public:
  /// `alignment` has a character for each column.
  Table(std::string alignment, const std::vector<std::string>& titles);

  /// Adds a row of printable texts, one for each column.
  void Add(const std::vector<std::string>& row) { rows_.push_back(row); }

  /// All rows, each with two blanks before every column and a line break at its end.
  std::string ToString() const;

 private:
  std::string alignment_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace zuna_cli
