#include "kit/listdir.h"

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

}  // namespace kit
