// Files whose names differ in the case of letters.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace zuna_cli {

/// Finds files by names in another case. Lists each folder once. Several threads use it at a time.
class SimilarNames {
 public:
  /// A file beside `path`, which is not there, whose name differs from it in the case of the letters A to Z
  /// alone. Nothing where there is none, or the folder cannot be listed.
  std::optional<std::string> Find(const std::string& path);

 private:
  using Names = std::map<std::string, std::string>;  ///< by the names in lower case

  const Names& NamesIn(const std::string& folder);

  std::mutex mutex_;
  std::map<std::string, Names> folders_;
};

}  // namespace zuna_cli
