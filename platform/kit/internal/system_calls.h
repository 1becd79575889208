// What the files that read and write share.

#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>

namespace kit {

/// Throws kit::IoError "PATH: WHAT: REASON; REMEDY" for a value of errno; `what` says what failed and where.
[[noreturn]] void ThrowIoError(const std::string& path, std::string_view what, int error);

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
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
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

}  // namespace kit
