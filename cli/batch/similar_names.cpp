// Files whose names look alike.
#include "cli/batch/similar_names.h"

#include <filesystem>

#include "cli/terminal/text.h"
#include "kit/error.h"
#include "kit/path.h"

namespace zuna_cli {

const SimilarNames::Names& SimilarNames::NamesIn(const std::string& folder) {
  const auto [found, is_new] = folders_.try_emplace(folder);
  if (!is_new) return found->second;
  try {
    for (const std::string& name : kit::listdir(folder.empty() ? "." : folder)) {
      found->second.emplace(LookOf(name), name);
    }
  } catch (const kit::IoError&) {  // The file is missing in any case.
  }
  return found->second;
}

std::optional<std::string> SimilarNames::Find(const std::string& path) {
  const std::filesystem::path whole(path);
  const std::string folder = whole.parent_path().string();
  const std::lock_guard lock(mutex_);
  const Names& names = NamesIn(folder);
  const auto found = names.find(LookOf(whole.filename().string()));
  if (found == names.end() || found->second == whole.filename()) return std::nullopt;
  return kit::path::Join(folder, found->second);
}

}  // namespace zuna_cli
