// A security library in place of platform/security, as small as it can be: the starting point for one of your
// own.
//
// IT DOES NOT ENCRYPT. A file holds the plaintext behind two checksums, which anybody can read and recompute.
// They only show where the contract in zuna_sec/cipher_stream.h wants a refusal. Replace Seal() and Open().
//
//   offset  size
//        0     8  "NOTSAFE\n"
//        8     8  checksum of key and IV
//       16     8  checksum of the plaintext
//       24     n  the plaintext

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "kit/error.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/errors.h"

namespace zuna_sec {

// CipherStream keeps a pointer to this class, and its header only names it: what the class is, each security
// library decides for itself. Any standard read-write stream over memory will do.
class PlaintextStream final : public std::stringstream {};

namespace {

const std::string kMagic = "NOTSAFE\n";
constexpr std::size_t kChecksumSize = 8;
constexpr std::size_t kHeaderSize = 8 + kChecksumSize + kChecksumSize;

/// FNV-1a with 64 bits, little-endian.
template <typename Bytes>
std::string Checksum(const Bytes& bytes) {
  std::uint64_t sum = 0xCBF29CE484222325;
  for (const auto byte : bytes) sum = (sum ^ static_cast<std::uint8_t>(byte)) * 0x100000001B3;
  std::string text;
  for (unsigned shift = 0; shift < 64; shift += 8) text += static_cast<char>(sum >> shift);
  return text;
}

std::string KeyChecksum(const std::vector<std::uint8_t>& key, const std::vector<std::uint8_t>& iv) {
  return Checksum(Checksum(key) + Checksum(iv));
}

std::string Seal(const std::string& plaintext, const std::vector<std::uint8_t>& key,
                 const std::vector<std::uint8_t>& iv) {
  return kMagic + KeyChecksum(key, iv) + Checksum(plaintext) + plaintext;
}

/// The plaintext of `bytes`; `name` begins the messages.
std::string Open(const std::string& bytes, const std::vector<std::uint8_t>& key,
                 const std::vector<std::uint8_t>& iv, const std::string& name) {
  if (bytes.substr(0, kMagic.size()) != kMagic) {
    throw NotEncryptedError(name, "does not begin like a file of this library", "give another file");
  }
  if (bytes.size() < kHeaderSize) throw TruncatedError(name, "ends inside the header", "get a complete copy");
  if (bytes.substr(kMagic.size(), kChecksumSize) != KeyChecksum(key, iv)) {
    throw WrongKeyError(name, "was written with another key or IV", "give the right key file");
  }
  std::string plaintext = bytes.substr(kHeaderSize);
  if (bytes.substr(kMagic.size() + kChecksumSize, kChecksumSize) != Checksum(plaintext)) {
    throw DamagedError(name, "was changed", "get an undamaged copy");
  }
  return plaintext;
}

std::string ReadFile(const std::string& path) try {
  std::ifstream file(path, std::ios::binary);
  std::error_code ignored;
  if (!file || std::filesystem::is_directory(path, ignored)) {
    throw kit::IoError(path + ": cannot be opened; give the path of a file");
  }
  return {std::istreambuf_iterator<char>(file), {}};
} catch (const std::ios_base::failure&) {
  throw kit::IoError(path + ": cannot be read; check the disk");
}

/// Creates an empty file in `folder` that only its owner may read, and returns its path; empty where it
/// cannot be created.
std::string NewFile(const std::filesystem::path& folder) {
  std::string path = (folder / ".own-XXXXXX").string();
  const int descriptor = ::mkstemp(path.data());
  if (descriptor < 0) return "";
  ::close(descriptor);
  return path;
}

/// Puts `bytes` into the file at `path` in one step: into a new file first, which then takes the name. Links
/// are followed.
void ReplaceFile(const std::string& path, const std::string& bytes) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path place = fs::weakly_canonical(path, error);
  const std::string fresh = error ? "" : NewFile(place.parent_path());
  if (fresh.empty()) throw kit::IoError(path + ": cannot be written; check the path");
  std::ofstream file(fresh, std::ios::binary);
  file << bytes;
  file.close();
  std::error_code ignored;  // No file has to be there.
  const fs::file_status old = fs::status(place, ignored);
  if (fs::exists(old)) fs::permissions(fresh, old.permissions(), error);
  if (file && !error) fs::rename(fresh, place, error);
  if (file && !error) return;
  fs::remove(fresh, ignored);
  throw kit::IoError(path + ": cannot be written; check the path");
}

}  // namespace

CipherStream::CipherStream() : plaintext_(std::make_unique<PlaintextStream>()) {}
CipherStream::~CipherStream() = default;
std::iostream& CipherStream::GetStream() { return *plaintext_; }

TwoFishCipherStream::TwoFishCipherStream(const std::string& path, const std::vector<std::uint8_t>& key,
                                         const std::vector<std::uint8_t>& iv)
    : key_(key), iv_(iv) {
  if (!path.empty()) plaintext().str(Open(ReadFile(path), key, iv, path));
}

TwoFishCipherStream::TwoFishCipherStream(const std::vector<std::uint8_t>& data,
                                         const std::vector<std::uint8_t>& key,
                                         const std::vector<std::uint8_t>& iv)
    : key_(key), iv_(iv) {
  plaintext().str(Open({data.begin(), data.end()}, key, iv, "encrypted data"));
}

TwoFishCipherStream::~TwoFishCipherStream() = default;

void TwoFishCipherStream::WriteToFile(const std::string& path) {
  ReplaceFile(path, Seal(plaintext().str(), key_, iv_));
}

std::vector<std::uint8_t> TwoFishCipherStream::GetEncryptedBytes() {
  const std::string bytes = Seal(plaintext().str(), key_, iv_);
  return {bytes.begin(), bytes.end()};
}

const char* TwoFishCipherStream::CipherName() const { return "none"; }

}  // namespace zuna_sec
