// Reads the plan from the environment, counts calls, and writes the report. Allocates nothing, and uses
// system calls directly, so that it does not count itself.

#include "tests/faults/shim/plan.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace zuna_faults {

namespace {

constexpr const char* kNames[] = {
    "open",        "openat",         "fopen",     "fdopen",     "read",     "write",     "writev",
    "sendfile",    "close",          "fclose",    "fsync",      "rename",   "renameat",  "renameat2",
    "link",        "linkat",         "symlink",   "unlink",     "unlinkat", "stat",      "lstat",
    "fstat",       "fstatat",        "fchmod",    "fchmodat",   "fchown",   "ftruncate", "truncate",
    "fallocate",   "mkdir",          "rmdir",     "readlink",   "realpath", "access",    "lseek",
    "mmap",        "munmap",         "getrandom", "getentropy", "opendir",  "fdopendir", "readdir",
    "closedir",    "isatty",         "ioctl",     "fcntl",      "dup2",     "poll",      "sigaction",
    "sigprocmask", "pthread_create", "memory"};
constexpr std::size_t kCalls = static_cast<std::size_t>(Call::kCount);
static_assert(sizeof kNames / sizeof *kNames == kCalls);
constexpr std::size_t kAny = kCalls;
constexpr int kMostDescriptors = 1024;

enum class Action : std::uint8_t { kNone, kError, kShort, kKill };

struct Plan {
  std::size_t call = 0;  // a Call, or kAny
  Action action = Action::kNone;
  int error = 0;
  std::uint64_t first = 0;
  std::uint64_t last = 0;
};

Plan g_plan;
Report* g_report = nullptr;
Report g_unread;  // counts when there is no report file
bool g_open_at_start[kMostDescriptors];
std::atomic<bool> g_counting{false};

Report& Counts() { return g_report != nullptr ? *g_report : g_unread; }

bool IsOpen(int descriptor) { return syscall(SYS_fcntl, descriptor, F_GETFD) >= 0; }

std::size_t CallOf(const char* name, std::size_t length) {
  for (std::size_t i = 0; i < kCalls; ++i) {
    if (std::strlen(kNames[i]) == length && std::memcmp(kNames[i], name, length) == 0) return i;
  }
  return kAny;
}

/// The end of the range in `repeats`: "", "+" or "xK".
std::uint64_t LastOf(std::uint64_t first, const char* repeats) {
  if (*repeats == '+') return ~std::uint64_t{0};
  return *repeats == 'x' ? first + std::strtoull(repeats + 1, nullptr, 10) - 1 : first;
}

void ReadPlan(const char* text) {
  const char* const colon = std::strchr(text, ':');
  if (colon == nullptr) return;
  char* rest = nullptr;
  g_plan.call = CallOf(text, static_cast<std::size_t>(colon - text));
  g_plan.first = std::strtoull(colon + 1, &rest, 10);
  if (*rest != ':') return;
  ++rest;
  if (std::strncmp(rest, "kill", 4) == 0) {
    g_plan.action = Action::kKill;
    rest += 4;
  } else if (std::strncmp(rest, "short", 5) == 0) {
    g_plan.action = Action::kShort;
    rest += 5;
  } else {
    g_plan.action = Action::kError;
    g_plan.error = static_cast<int>(std::strtol(rest, &rest, 10));
  }
  g_plan.last = LastOf(g_plan.first, rest);
}

void MapReport(const char* path) {
  const long file = syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) return;
  if (syscall(SYS_ftruncate, file, sizeof(Report)) == 0) {
    const long mapped =
        syscall(SYS_mmap, nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (mapped > 0) g_report = reinterpret_cast<Report*>(mapped);
  }
  syscall(SYS_close, file);
}

void ClearCounts() {
  std::memset(&Counts(), 0, sizeof(Report));
  for (std::size_t i = 0; i < kCalls; ++i) std::strcpy(Counts().entries[i].name, kNames[i]);
}

std::uint64_t Count(std::uint64_t& counter) { return __atomic_add_fetch(&counter, 1, __ATOMIC_RELAXED); }

}  // namespace

void NoteStart() {
  for (int i = 0; i < kMostDescriptors; ++i) g_open_at_start[i] = IsOpen(i);
  if (const char* path = std::getenv("ZUNA_FAULT_REPORT")) MapReport(path);
  ClearCounts();
  if (const char* plan = std::getenv("ZUNA_FAULT")) ReadPlan(plan);
  unsetenv("LD_PRELOAD");  // what the program starts, such as an editor, runs as it is
  errno = 0;
  g_counting = true;
}

Verdict Decide(Call call) {
  if (!g_counting) return Verdict::kProceed;
  Report& report = Counts();
  const auto index = static_cast<std::size_t>(call);
  std::uint64_t number = Count(report.entries[index].count);
  const std::uint64_t any = call == Call::kMemory ? 0 : Count(report.any);
  if (g_plan.call == kAny) number = any;
  if (g_plan.action == Action::kNone || (g_plan.call != kAny && g_plan.call != index))
    return Verdict::kProceed;
  if (number < g_plan.first || number > g_plan.last) return Verdict::kProceed;
  Count(report.fired);
  if (g_plan.action == Action::kKill) syscall(SYS_kill, syscall(SYS_getpid), SIGKILL);
  if (g_plan.action == Action::kShort) return Verdict::kShort;
  errno = g_plan.error;
  return Verdict::kFail;
}

void NoteExit() {
  if (g_report == nullptr) return;
  g_report->descriptors = 0;
  for (int i = 0; i < kMostDescriptors; ++i) {
    if (IsOpen(i) && !g_open_at_start[i]) ++g_report->descriptors;
  }
  g_report->at_exit = 1;
}

void Begin(const char* plan) {
  g_plan = {};
  ReadPlan(plan);
  ClearCounts();
  g_counting = true;
}

const Report& End() {
  g_plan = {};
  g_counting = false;
  return Counts();
}

namespace {

[[gnu::destructor]] void AtEnd() { NoteExit(); }

}  // namespace

}  // namespace zuna_faults
