// The wrappers of system calls, each of which can fail. A call that fails has had no effect, apart from those
// that close: they always close.

// The functions are declared here, with plain types. The C library's headers would turn some of them into
// variants with checks or into 64-bit names.
#include <dlfcn.h>
#include <stdarg.h>

#include <cerrno>
#include <cstddef>
#include <utility>

#include "tests/faults/shim/plan.h"

using zuna_faults::Call;
using zuna_faults::Decide;
using zuna_faults::Fails;
using zuna_faults::Verdict;

namespace {

using Size = std::size_t;
using Result = std::ptrdiff_t;
using Offset = long;
using Mode = unsigned;

constexpr int kNeedsMode = 0100 | 020000000;  // O_CREAT, O_TMPFILE

/// The function that one of these replaces.
template <typename Function>
Function* Real(Function*& known, const char* name) {
  if (known == nullptr) known = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
  return known;
}

/// How much of `size` bytes is asked for.
Size Limited(Verdict verdict, Size size) { return verdict == Verdict::kShort && size > 1 ? 1 : size; }

}  // namespace

#define VISIBLE extern "C" [[gnu::visibility("default")]]

// TYPE NAME PARAMETERS, which counts as CALL and returns FAILED in place of a call that fails.
#define REPLACE(call, failed, type, name, parameters, arguments)              \
  VISIBLE type name parameters {                                              \
    static type(*known) parameters;                                           \
    return Fails(Call::call) ? (type)(failed) : Real(known, #name) arguments; \
  }

// A function that closes what it gets.
#define REPLACE_CLOSING(call, failed, type, name, parameters, arguments) \
  VISIBLE type name parameters {                                         \
    static type(*known) parameters;                                      \
    const type result = Real(known, #name) arguments;                    \
    return Fails(Call::call) ? (type)(failed) : result;                  \
  }

// A function that opens a file, whose last parameter is a mode that is not always there.
#define REPLACE_OPENING(call, name, parameters, arguments)        \
  VISIBLE int name parameters {                                   \
    static int (*known)(...);                                     \
    Mode mode = 0;                                                \
    if ((flags & kNeedsMode) != 0) {                              \
      va_list list;                                               \
      va_start(list, flags);                                      \
      mode = va_arg(list, Mode);                                  \
      va_end(list);                                               \
    }                                                             \
    return Fails(Call::call) ? -1 : Real(known, #name) arguments; \
  }

// A function that transfers `size` bytes at most.
#define REPLACE_TRANSFER(call, name, parameters, arguments) \
  VISIBLE Result name parameters {                          \
    static Result(*known) parameters;                       \
    const Verdict verdict = Decide(Call::call);             \
    if (verdict == Verdict::kFail) return -1;               \
    size = Limited(verdict, size);                          \
    return Real(known, #name) arguments;                    \
  }

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the C library prescribes these names
REPLACE_OPENING(kOpen, open, (const char* path, int flags, ...), (path, flags, mode))
REPLACE_OPENING(kOpen, open64, (const char* path, int flags, ...), (path, flags, mode))
REPLACE_OPENING(kOpenat, openat, (int folder, const char* path, int flags, ...), (folder, path, flags, mode))
REPLACE_OPENING(kOpenat, openat64, (int folder, const char* path, int flags, ...),
                (folder, path, flags, mode))
REPLACE(kOpen, -1, int, __open_2, (const char* path, int flags), (path, flags))
REPLACE(kOpen, -1, int, __open64_2, (const char* path, int flags), (path, flags))
REPLACE(kOpenat, -1, int, __openat_2, (int folder, const char* path, int flags), (folder, path, flags))
REPLACE(kOpenat, -1, int, __openat64_2, (int folder, const char* path, int flags), (folder, path, flags))
REPLACE(kFopen, nullptr, void*, fopen, (const char* path, const char* mode), (path, mode))
REPLACE(kFopen, nullptr, void*, fopen64, (const char* path, const char* mode), (path, mode))
REPLACE(kFdopen, nullptr, void*, fdopen, (int file, const char* mode), (file, mode))

REPLACE_TRANSFER(kRead, read, (int file, void* to, Size size), (file, to, size))
REPLACE_TRANSFER(kRead, __read_chk, (int file, void* to, Size size, Size room), (file, to, size, room))
// NOLINTEND(clang-diagnostic-reserved-identifier)
REPLACE_TRANSFER(kRead, pread, (int file, void* to, Size size, Offset offset), (file, to, size, offset))
REPLACE_TRANSFER(kRead, pread64, (int file, void* to, Size size, Offset offset), (file, to, size, offset))
REPLACE_TRANSFER(kWrite, write, (int file, const void* from, Size size), (file, from, size))
REPLACE_TRANSFER(kWrite, pwrite, (int file, const void* from, Size size, Offset offset),
                 (file, from, size, offset))
REPLACE_TRANSFER(kWrite, pwrite64, (int file, const void* from, Size size, Offset offset),
                 (file, from, size, offset))
REPLACE_TRANSFER(kSendfile, sendfile, (int to, int from, Offset* offset, Size size), (to, from, offset, size))
REPLACE_TRANSFER(kGetrandom, getrandom, (void* to, Size size, unsigned flags), (to, size, flags))
REPLACE(kWritev, -1, Result, writev, (int file, const void* pieces, int count), (file, pieces, count))
REPLACE(kGetentropy, -1, int, getentropy, (void* to, Size size), (to, size))

REPLACE_CLOSING(kClose, -1, int, close, (int file), (file))
REPLACE_CLOSING(kFclose, -1, int, fclose, (void* file), (file))
REPLACE_CLOSING(kClosedir, -1, int, closedir, (void* folder), (folder))

REPLACE(kFsync, -1, int, fsync, (int file), (file))
REPLACE(kFsync, -1, int, fdatasync, (int file), (file))
REPLACE(kFtruncate, -1, int, ftruncate, (int file, Offset size), (file, size))
REPLACE(kFtruncate, -1, int, ftruncate64, (int file, Offset size), (file, size))
REPLACE(kTruncate, -1, int, truncate, (const char* path, Offset size), (path, size))
REPLACE(kTruncate, -1, int, truncate64, (const char* path, Offset size), (path, size))
REPLACE(kFallocate, -1, int, fallocate, (int file, int mode, Offset at, Offset size), (file, mode, at, size))
REPLACE(kFallocate, -1, int, fallocate64, (int file, int mode, Offset at, Offset size),
        (file, mode, at, size))

REPLACE(kRename, -1, int, rename, (const char* from, const char* to), (from, to))
REPLACE(kRenameat, -1, int, renameat, (int from_folder, const char* from, int to_folder, const char* to),
        (from_folder, from, to_folder, to))
REPLACE(kRenameat2, -1, int, renameat2,
        (int from_folder, const char* from, int to_folder, const char* to, unsigned flags),
        (from_folder, from, to_folder, to, flags))
REPLACE(kLink, -1, int, link, (const char* from, const char* to), (from, to))
REPLACE(kLinkat, -1, int, linkat,
        (int from_folder, const char* from, int to_folder, const char* to, int flags),
        (from_folder, from, to_folder, to, flags))
REPLACE(kSymlink, -1, int, symlink, (const char* target, const char* path), (target, path))
REPLACE(kUnlink, -1, int, unlink, (const char* path), (path))
REPLACE(kUnlink, -1, int, remove, (const char* path), (path))
REPLACE(kUnlinkat, -1, int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags))
REPLACE(kMkdir, -1, int, mkdir, (const char* path, Mode mode), (path, mode))
REPLACE(kMkdir, -1, int, mkdirat, (int folder, const char* path, Mode mode), (folder, path, mode))
REPLACE(kRmdir, -1, int, rmdir, (const char* path), (path))

REPLACE(kStat, -1, int, stat, (const char* path, void* to), (path, to))
REPLACE(kStat, -1, int, stat64, (const char* path, void* to), (path, to))
REPLACE(kLstat, -1, int, lstat, (const char* path, void* to), (path, to))
REPLACE(kLstat, -1, int, lstat64, (const char* path, void* to), (path, to))
REPLACE(kFstat, -1, int, fstat, (int file, void* to), (file, to))
REPLACE(kFstat, -1, int, fstat64, (int file, void* to), (file, to))
REPLACE(kFstatat, -1, int, fstatat, (int folder, const char* path, void* to, int flags),
        (folder, path, to, flags))
REPLACE(kFstatat, -1, int, fstatat64, (int folder, const char* path, void* to, int flags),
        (folder, path, to, flags))
REPLACE(kFchmod, -1, int, fchmod, (int file, Mode mode), (file, mode))
REPLACE(kFchmodat, -1, int, chmod, (const char* path, Mode mode), (path, mode))
REPLACE(kFchmodat, -1, int, fchmodat, (int folder, const char* path, Mode mode, int flags),
        (folder, path, mode, flags))
REPLACE(kFchown, -1, int, fchown, (int file, unsigned owner, unsigned group), (file, owner, group))

REPLACE(kReadlink, -1, Result, readlink, (const char* path, char* to, Size size), (path, to, size))
REPLACE(kReadlink, -1, Result, readlinkat, (int folder, const char* path, char* to, Size size),
        (folder, path, to, size))
REPLACE(kRealpath, nullptr, char*, realpath, (const char* path, char* to), (path, to))
REPLACE(kAccess, -1, int, access, (const char* path, int mode), (path, mode))
REPLACE(kAccess, -1, int, faccessat, (int folder, const char* path, int mode, int flags),
        (folder, path, mode, flags))
REPLACE(kLseek, -1, Offset, lseek, (int file, Offset offset, int from), (file, offset, from))
REPLACE(kLseek, -1, Offset, lseek64, (int file, Offset offset, int from), (file, offset, from))
REPLACE(kMmap, -1, void*, mmap, (void* at, Size size, int protection, int flags, int file, Offset offset),
        (at, size, protection, flags, file, offset))
REPLACE(kMmap, -1, void*, mmap64, (void* at, Size size, int protection, int flags, int file, Offset offset),
        (at, size, protection, flags, file, offset))
REPLACE(kMunmap, -1, int, munmap, (void* at, Size size), (at, size))

REPLACE(kOpendir, nullptr, void*, opendir, (const char* path), (path))
REPLACE(kFdopendir, nullptr, void*, fdopendir, (int folder), (folder))
REPLACE(kReaddir, nullptr, void*, readdir, (void* folder), (folder))
REPLACE(kReaddir, nullptr, void*, readdir64, (void* folder), (folder))

REPLACE(kIsatty, 0, int, isatty, (int file), (file))
REPLACE(kDup2, -1, int, dup2, (int from, int to), (from, to))
REPLACE(kDup2, -1, int, dup3, (int from, int to, int flags), (from, to, flags))
REPLACE(kPoll, -1, int, poll, (void* files, unsigned long count, int timeout), (files, count, timeout))
REPLACE(kSigaction, -1, int, sigaction, (int number, const void* action, void* before),
        (number, action, before))
REPLACE(kSigprocmask, -1, int, sigprocmask, (int how, const void* set, void* before), (how, set, before))
REPLACE(kSigprocmask, -1, int, pthread_sigmask, (int how, const void* set, void* before), (how, set, before))

// Returns the error and leaves errno as it is.
VISIBLE int pthread_create(void* thread, const void* attributes, void* (*start)(void*), void* argument) {
  static int (*known)(void*, const void*, void* (*)(void*), void*);
  const int before = errno;
  if (!Fails(Call::kPthreadCreate)) return Real(known, "pthread_create")(thread, attributes, start, argument);
  return std::exchange(errno, before);
}

// Their last parameter is a number or a pointer, or is not there; passing one on that is not there does no
// harm.
VISIBLE int ioctl(int file, unsigned long request, ...) {
  static int (*known)(int, unsigned long, ...);
  va_list list;
  va_start(list, request);
  void* const argument = va_arg(list, void*);
  va_end(list);
  return Fails(Call::kIoctl) ? -1 : Real(known, "ioctl")(file, request, argument);
}

VISIBLE int fcntl(int file, int command, ...) {
  static int (*known)(int, int, ...);
  va_list list;
  va_start(list, command);
  void* const argument = va_arg(list, void*);
  va_end(list);
  return Fails(Call::kFcntl) ? -1 : Real(known, "fcntl")(file, command, argument);
}

VISIBLE int fcntl64(int file, int command, ...) {
  static int (*known)(int, int, ...);
  va_list list;
  va_start(list, command);
  void* const argument = va_arg(list, void*);
  va_end(list);
  return Fails(Call::kFcntl) ? -1 : Real(known, "fcntl64")(file, command, argument);
}

namespace {

using Main = int(int, char**, char**);
Main* g_main;

int MainWithFaults(int count, char** arguments, char** environment) {
  zuna_faults::NoteStart();
  return g_main(count, arguments, environment);
}

}  // namespace

// Replaced to know when main() begins.
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the C library prescribes the name
VISIBLE int __libc_start_main(Main* main, int count, char** arguments, void (*start)(), void (*end)(),
                              void (*loader_end)(), void* stack_end) {
  static int (*known)(Main*, int, char**, void (*)(), void (*)(), void (*)(), void*);
  g_main = main;
  return Real(known, "__libc_start_main")(MainWithFaults, count, arguments, start, end, loader_end,
                                          stack_end);
}

// Replaced for the report: it runs no destructors.
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the C library prescribes the name
VISIBLE [[noreturn]] void _exit(int status) {
  static void (*known)(int);
  zuna_faults::NoteExit();
  for (;;) Real(known, "_exit")(status);
}
