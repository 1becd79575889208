// What every file of seeds defines and uses (fuzz/README.md).

#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace fuzz {

/// The folder that a target's seeds are written into.
class SeedFolder {
 public:
  explicit SeedFolder(std::filesystem::path path);

  /// Writes one input. `name` begins with "good-", "bad-" or "unsupported-", and says what it is. Throws
  /// std::runtime_error for any other name, and where the file cannot be written.
  void Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const;

 private:
  std::filesystem::path path_;
};

/// Writes a target's seeds; every seeds/NAME_seeds.cpp defines its own.
void WriteSeeds(const SeedFolder& folder);

}  // namespace fuzz
