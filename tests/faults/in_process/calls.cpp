// What the calls share.

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "kit/file.h"
#include "kit/path.h"
#include "tests/faults/in_process/calls.h"
#include "tests/support/encrypted.h"

namespace public_calls {

namespace {

[[noreturn]] void WriteAndExit(int to, const std::vector<std::uint8_t>& bytes) {
  const bool written = ::write(to, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  ::_exit(written ? 0 : 1);
}

}  // namespace

std::vector<std::uint8_t> EncryptedElsewhere(const std::string& plaintext) {
  return EncryptedElsewhere(plaintext, zuna_test::kKey);
}

std::vector<std::uint8_t> EncryptedElsewhere(const std::string& plaintext, const CipherKey& key) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("cannot make a pipe");
  const pid_t child = ::fork();
  if (child == 0) WriteAndExit(ends[1], zuna_test::Encrypted(plaintext, key));
  ::close(ends[1]);
  std::vector<std::uint8_t> bytes(plaintext.size() + 4096);
  std::size_t size = 0;
  for (ssize_t count = 1; count > 0; size += static_cast<std::size_t>(count)) {
    count = ::read(ends[0], bytes.data() + size, bytes.size() - size);
    if (count < 0) throw std::runtime_error("cannot read from a pipe");
  }
  ::close(ends[0]);
  ::waitpid(child, nullptr, 0);
  bytes.resize(size);
  return bytes;
}

std::string ContentOf(const std::string& path) {
  const kit::FileBytes file = kit::ReadWholeFile(path, std::size_t{1} << 20);
  std::string text(file.bytes().begin(), file.bytes().end());
  for (const std::string& name : kit::listdir(std::filesystem::path(path).parent_path())) text += '\n' + name;
  return text;
}

int OpenDescriptors() {
  constexpr int kMostDescriptors = 64;
  int open = 0;
  for (int number = 0; number < kMostDescriptors; ++number) open += ::fcntl(number, F_GETFD) != -1 ? 1 : 0;
  return open;
}

}  // namespace public_calls
