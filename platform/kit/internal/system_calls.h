// What the files that read and write share.

#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace kit {

/// The bits of a mode that an output keeps: not set-user-ID, set-group-ID and sticky.
inline constexpr mode_t kPermissions = 0777;

/// Throws kit::FileIoError "PATH: WHAT: REASON; REMEDY" for a value of errno; `what` says what failed and
/// where.
[[noreturn]] void ThrowIoError(const std::string& path, std::string_view what, int error);

/// Throws kit::FileIoError where `path` is empty or holds a NUL byte, at which the system would cut it off.
void RequireWholePath(const std::string& path);

/// Writes all `bytes` to an open file. Throws kit::IoError about `path`.
void WriteAll(int file, std::span<const std::uint8_t> bytes, const std::string& path);

/// Makes a system call and repeats it while a signal interrupts it.
template <typename Call>
auto RetryInterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

/// An open file that is closed when it goes out of scope; -1 for none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() {
    if (number_ >= 0) ::close(number_);
  }

  int number() const { return number_; }
  bool is_open() const { return number_ >= 0; }

  /// Closes at once. Returns false and sets errno where close(2) fails: some file systems report a failed
  /// write only here. EINTR is not a failure, and the call is not repeated: the number may already belong to
  /// another file.
  bool Close() {
    const int closed = number_;
    number_ = -1;
    return ::close(closed) == 0 || errno == EINTR;
  }

 private:
  int number_;
};

/// Flushes an open file to the disk and closes it. Throws kit::IoError about `path`.
void FlushAndClose(FileDescriptor& file, const std::string& path);

}  // namespace kit
