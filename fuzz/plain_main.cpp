// Runs a fuzz target over given files, so that every compiler and every test run can replay inputs.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "fuzz/target.h"

namespace {

namespace fs = std::filesystem;

/// The file at `path`, or all those in the folder there and below it, sorted.
std::vector<fs::path> FilesAt(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

void Replay(const fs::path& path) {
  std::ifstream file(path, std::ios_base::binary);
  if (!file) throw std::runtime_error(path.string() + ": cannot be opened");
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) try {
  int replayed = 0;
  for (int i = 1; i < argc; ++i) {
    for (const fs::path& file : FilesAt(argv[i])) {
      std::fprintf(stderr, "%s\n", file.c_str());  // the last line names what crashed
      Replay(file);
      ++replayed;
    }
  }
  std::printf("replayed %d inputs\n", replayed);
  return replayed > 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
