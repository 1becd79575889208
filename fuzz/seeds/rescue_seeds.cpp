// Files of every kind and version, damaged in several ways.

#include <algorithm>

#include "fuzz/seeds/sample_files.h"
#include "fuzz/seeds/seeds.h"

void fuzz::WriteSeeds(const SeedFolder& folder) {
  constexpr std::size_t kZeros = 20;
  for (const SampleFile& file : SampleFiles()) {
    const std::string& bytes = file.bytes;
    const std::size_t half = bytes.size() / 2;
    folder.Write("good-" + file.name, SeedBytes(bytes));
    folder.Write("bad-cut-" + file.name, SeedBytes(bytes.substr(0, half)));
    folder.Write("bad-front-" + file.name,
                 SeedBytes(std::string(kZeros, '\0') + bytes.substr(std::min(kZeros, half))));
    folder.Write("bad-middle-" + file.name,
                 SeedBytes(bytes.substr(0, half) + std::string(kZeros, '\0') + bytes.substr(half)));
    folder.Write("bad-joined-" + file.name, SeedBytes(bytes + bytes));
    std::vector<std::uint8_t> sealed = zuna_test::Encrypted(bytes, {});
    sealed.back() ^= 1;
    folder.Write("bad-changed-" + file.name, sealed);
  }
}
