#include "cli/base/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "cli/base/errors.h"
#include "cli/base/interrupt.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kPiece = 1 << 16;

[[noreturn]] void FailIo(const std::string& name, const std::string& what, const std::string& remedy) {
  const std::string reason = std::generic_category().message(errno);
  throw Failure(ExitCode::kIo, name, what + " (" + reason + "); " + remedy);
}

/// Closes a file descriptor of its own.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ > STDERR_FILENO) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

int OpenForReading(const std::string& path) {
  if (path == kStandardStream) return STDIN_FILENO;
  const int number = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (number < 0) FailIo(path, "cannot be opened", "check the path and its permissions");
  return number;
}

/// Writes everything; false with errno where that fails.
bool WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// The mode for the file at `path`: that of the file it replaces, else `mode` as the umask allows.
mode_t ModeFor(const std::string& path, unsigned mode) {
  struct stat old {};
  if (stat(path.c_str(), &old) == 0) return old.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return static_cast<mode_t>(mode) & ~mask;
}

bool FillFile(int descriptor, std::string_view bytes, mode_t mode) {
  return WriteAll(descriptor, bytes) && fchmod(descriptor, mode) == 0 && fsync(descriptor) == 0;
}

/// Makes the new name last; a file system that cannot do that for folders has done what it can.
void SyncFolder(const std::filesystem::path& folder) {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_CLOEXEC));
  if (descriptor.number() >= 0) fsync(descriptor.number());
}

}  // namespace

std::string InputName(const std::string& path) { return path == kStandardStream ? "standard input" : path; }

std::string OutputName(const std::string& path) { return path == kStandardStream ? "standard output" : path; }

std::vector<std::uint8_t> ReadBytes(const std::string& path, std::size_t limit) {
  const Descriptor descriptor(OpenForReading(path));
  std::vector<std::uint8_t> bytes;
  std::array<std::uint8_t, kPiece> piece;
  for (;;) {
    const ssize_t count = read(descriptor.number(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailIo(InputName(path), "cannot be read", "check that it is a readable file");
    if (count == 0) return bytes;
    bytes.insert(bytes.end(), piece.begin(), piece.begin() + count);
    if (bytes.size() > limit) {
      throw Failure(ExitCode::kBadInput, InputName(path),
                    "has more than " + std::to_string(limit) + " bytes; give another file");
    }
  }
}

void WriteStandardOutput(std::string_view bytes) {
  if (!WriteAll(STDOUT_FILENO, bytes)) {
    if (errno == EPIPE) throw Failure(ExitCode::kClosedPipe, "");  // Its reader has seen enough.
    FailIo("standard output", "cannot be written", "check where it goes and whether there is space");
  }
}

void WriteFileAtomically(const std::string& path, std::string_view bytes, unsigned mode) {
  const std::string remedy = "check the folder, its permissions and the space left";
  const HoldSignals no_leftovers;
  std::string temporary = path + ".XXXXXX";
  const Descriptor descriptor(mkstemp(temporary.data()));
  if (descriptor.number() < 0) FailIo(path, "cannot be created", remedy);
  if (!FillFile(descriptor.number(), bytes, ModeFor(path, mode)) ||
      std::rename(temporary.c_str(), path.c_str()) != 0) {
    const int error = errno;
    unlink(temporary.c_str());
    errno = error;
    FailIo(path, "cannot be written", remedy);
  }
  const auto folder = std::filesystem::path(path).parent_path();
  SyncFolder(folder.empty() ? "." : folder);
}

}  // namespace zuna_cli
