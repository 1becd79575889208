#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace support {

using ByteVector = std::vector<std::uint8_t>;

ByteVector FromHex(std::string_view hex);
ByteVector FromText(std::string_view text);

/// The bytes `text` encrypted through a cipher stream.
ByteVector Sealed(std::string_view text, const ByteVector& key, const ByteVector& iv);

/// What `bytes` decrypt to through a cipher stream.
std::string Opened(const ByteVector& bytes, const ByteVector& key, const ByteVector& iv);

/// A folder of its own, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  const std::filesystem::path& path() const { return path_; }

  /// The names of everything in the folder, sorted.
  std::vector<std::string> Names() const;

 private:
  std::filesystem::path path_;
};

void WritePlainFile(const std::string& path, std::string_view content);
std::string ReadPlainFile(const std::string& path);

}  // namespace support
