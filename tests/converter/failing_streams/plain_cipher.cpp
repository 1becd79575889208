// A security library for tests: nothing is encrypted, and the plaintext stream throws on every short read.
// With it the converter shows what becomes of a stream's failure, which the real library's streams do not
// throw.

#include <fstream>
#include <iterator>
#include <sstream>

#include "zuna_sec/cipher_stream.h"

namespace zuna_sec {

class PlaintextStream : public std::stringstream {
 public:
  PlaintextStream() { exceptions(failbit | badbit); }
};

CipherStream::CipherStream() : plaintext_(std::make_unique<PlaintextStream>()) {}
CipherStream::~CipherStream() = default;
std::iostream& CipherStream::GetStream() { return *plaintext_; }

TwoFishCipherStream::TwoFishCipherStream(const std::string& path, const std::vector<std::uint8_t>&,
                                         const std::vector<std::uint8_t>&) {
  if (path.empty()) return;
  std::ifstream file(path, std::ios::binary);
  plaintext().str({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
}

TwoFishCipherStream::TwoFishCipherStream(const std::vector<std::uint8_t>& data,
                                         const std::vector<std::uint8_t>&, const std::vector<std::uint8_t>&) {
  plaintext().str(std::string(data.begin(), data.end()));
}

TwoFishCipherStream::~TwoFishCipherStream() = default;

void TwoFishCipherStream::WriteToFile(const std::string& path) {
  std::ofstream(path, std::ios::binary) << plaintext().str();
}

std::vector<std::uint8_t> TwoFishCipherStream::GetEncryptedBytes() {
  const std::string text = plaintext().str();
  return {text.begin(), text.end()};
}

const char* TwoFishCipherStream::CipherName() const { return "none"; }

}  // namespace zuna_sec
