#include "tests/security/support.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>

#include "kit/format.h"
#include "zuna_sec/cipher_stream.h"

namespace support {

ByteVector FromHex(std::string_view hex) {
  ByteVector bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
  }
  return bytes;
}

ByteVector FromText(std::string_view text) { return {text.begin(), text.end()}; }

ByteVector Sealed(std::string_view text, const ByteVector& key, const ByteVector& iv) {
  zuna_sec::TwoFishCipherStream stream(std::string(), key, iv);
  stream.GetStream().write(text.data(), static_cast<std::streamsize>(text.size()));
  return stream.GetEncryptedBytes();
}

std::string Opened(const ByteVector& bytes, const ByteVector& key, const ByteVector& iv) {
  zuna_sec::TwoFishCipherStream stream(bytes, key, iv);
  return {std::istreambuf_iterator<char>(stream.GetStream()), {}};
}

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  path_ = std::filesystem::temp_directory_path() / kit::format("zuna-test-%08x%08x", random(), random());
  std::filesystem::create_directory(path_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::vector<std::string> TemporaryFolder::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_))
    names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

void WritePlainFile(const std::string& path, std::string_view content) {
  std::ofstream(path, std::ios_base::binary) << content;
}

std::string ReadPlainFile(const std::string& path) {
  std::ifstream file(path, std::ios_base::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace support
