// Directories and names by std::filesystem.

#include "kit/path.h"

#include <algorithm>
#include <filesystem>

#include "kit/error.h"

namespace kit {

std::vector<std::string> listdir(const std::string& dir) {
  std::vector<std::string> names;
  try {
    for (const auto& entry : std::filesystem::directory_iterator(dir)) {
      names.push_back(entry.path().filename().string());
    }
  } catch (const std::filesystem::filesystem_error& error) {
    throw IoError(dir + ": cannot list the directory: " + error.code().message());
  }
  std::sort(names.begin(), names.end());
  return names;
}

namespace path {

std::string extension(const std::string& path) { return std::filesystem::path(path).extension().string(); }

std::string Join(const std::string& dir, const std::string& name) {
  return (std::filesystem::path(dir) / name).string();
}

}  // namespace path

}  // namespace kit
