// Files whose names look alike.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace zuna_cli {

/// Finds files by names in another case or another form of Unicode. Lists each folder once. Several threads
/// use it at a time.
class SimilarNames {
 public:
  /// A file beside `path`, which is not there, whose name differs from it in the case of letters or in how
  /// they are composed (an accent may be a character of its own) alone. Nothing where there is none, or the
  /// folder cannot be listed.
  std::optional<std::string> Find(const std::string& path);

 private:
  using Names = std::map<std::string, std::string>;  ///< by the names in one form

  const Names& NamesIn(const std::string& folder);

  std::mutex mutex_;
  std::map<std::string, Names> folders_;
};

}  // namespace zuna_cli
