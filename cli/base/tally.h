#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zuna_cli {

/// Counts things by kind, as "2 system-exclusive messages, 14 lyrics".
class Tally {
 public:
  /// Adds `count` things of a kind, which has a word for one of it and a word for many.
  void Add(const std::string& one, const std::string& many, std::size_t count = 1);

  bool empty() const { return kinds_.empty(); }
  std::string ToString() const;

 private:
  struct Kind {
    std::string one;
    std::string many;
    std::size_t count;
  };
  std::vector<Kind> kinds_;  ///< in the order of their first appearance
};

/// "1 voice", "2 voices".
std::string Counted(std::size_t count, const std::string& one, const std::string& many);

}  // namespace zuna_cli
