#include "kit/path.h"

#include <filesystem>

namespace kit::path {

std::string extension(const std::string& path) { return std::filesystem::path(path).extension().string(); }

std::string Join(const std::string& dir, const std::string& name) {
  return (std::filesystem::path(dir) / name).string();
}

}  // namespace kit::path
