// Replaces functions of the C library: a program's own functions come before those of its libraries.

#include "tests/platform/kit/failing_calls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace failing_calls {

namespace {

Failures* g_failures = nullptr;

/// Makes the system call `number` unless `call` is to fail now.
template <typename... Arguments>
long Call(const char* call, long number, Arguments... arguments) {
  const int error = g_failures != nullptr ? g_failures->Count(call) : 0;
  if (error == 0) return ::syscall(number, arguments...);
  errno = error;
  return -1;
}

}  // namespace

Failures::Failures(std::vector<Failure> failures) : failures_(std::move(failures)) { g_failures = this; }

Failures::~Failures() { g_failures = nullptr; }

int Failures::Count(const std::string& call) {
  if (!is_active_) return 0;
  const int number = ++counts_[call];
  for (const Failure& failure : failures_) {
    const bool fails =
        failure.number == 0 || failure.number == number || (failure.later && failure.number < number);
    if (failure.call != call || !fails) continue;
    is_active_ = false;
    if (failure.meanwhile) failure.meanwhile();
    is_active_ = true;
    return failure.error;
  }
  return 0;
}

}  // namespace failing_calls

using failing_calls::Call;

#pragma GCC visibility push(default)

extern "C" {

int fsync(int file) { return static_cast<int>(Call("fsync", SYS_fsync, file)); }

ssize_t read(int file, void* to, size_t size) { return Call("read", SYS_read, file, to, size); }

ssize_t write(int file, const void* from, size_t size) { return Call("write", SYS_write, file, from, size); }

ssize_t getrandom(void* to, size_t size, unsigned flags) {
  return Call("getrandom", SYS_getrandom, to, size, flags);
}

int getentropy(void* to, size_t size) { return Call("getentropy", SYS_getrandom, to, size, 0) < 0 ? -1 : 0; }

/// A file is closed also where that fails.
int close(int file) {
  const long closed = ::syscall(SYS_close, file);
  return Call("close", SYS_getpid) < 0 ? -1 : static_cast<int>(closed);
}

int openat(int folder, const char* path, int flags, ...) {
  std::va_list list;
  va_start(list, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(list, mode_t) : 0;
  va_end(list);
  return static_cast<int>(Call("openat", SYS_openat, folder, path, flags, mode));
}

int fstatat(int folder, const char* path, struct stat* to, int flags) noexcept {
  return static_cast<int>(Call("fstatat", SYS_newfstatat, folder, path, to, flags));
}

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) noexcept {
  return static_cast<int>(Call("linkat", SYS_linkat, from_folder, from, to_folder, to, flags));
}

int unlinkat(int folder, const char* path, int flags) noexcept {
  return static_cast<int>(Call("unlinkat", SYS_unlinkat, folder, path, flags));
}

int renameat(int from_folder, const char* from, int to_folder, const char* to) noexcept {
  return static_cast<int>(Call("renameat", SYS_renameat2, from_folder, from, to_folder, to, 0));
}

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) noexcept {
  return static_cast<int>(Call("renameat2", SYS_renameat2, from_folder, from, to_folder, to, flags));
}

}  // extern "C"

#pragma GCC visibility pop
