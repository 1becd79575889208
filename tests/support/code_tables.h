// The tables of codes in the documentation.

#pragma once

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace zuna_test {

/// The lines of a page of docs/ that are rows of a table of codes.
inline std::vector<std::string> CodeRows(const std::string& page) {
  std::ifstream file(std::string(std::getenv("ZUNA_SOURCE")) + "/docs/" + page);
  std::vector<std::string> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("| `")) rows.push_back(line);
  }
  return rows;
}

}  // namespace zuna_test
