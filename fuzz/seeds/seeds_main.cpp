// The program that writes the seeds of one target into a folder.

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "fuzz/seeds/seeds.h"

namespace fuzz {

SeedFolder::SeedFolder(std::filesystem::path path) : path_(std::move(path)) {
  std::filesystem::remove_all(path_);  // seeds of an earlier build that have been renamed
  std::filesystem::create_directories(path_);
}

void SeedFolder::Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
  if (!name.starts_with("good-") && !name.starts_with("bad-") && !name.starts_with("unsupported-")) {
    throw std::runtime_error(name + ": a seed's name says first whether it is good-, bad- or unsupported-");
  }
  std::ofstream file(path_ / name, std::ios_base::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error((path_ / name).string() + ": cannot be written");
}

}  // namespace fuzz

int main(int argc, char** argv) try {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER (emptied first)\n", argv[0]);
    return 2;
  }
  fuzz::WriteSeeds(fuzz::SeedFolder(argv[1]));
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
