// Which call of a process is to fail, and how; counts of all calls from the beginning of main() on. What
// comes before it is the loader's, the C++ library's and that of other libraries, which end the process where
// they lack something.
//
// ZUNA_FAULT=CALL:N:ACTION names the fault. CALL is the name of a system call's wrapper, "any" for all of
// them together, or "memory" for all allocations together. ACTION is one of
//     ERRNO        the Nth call fails with this number
//     ERRNO+       the Nth call and all later ones fail
//     ERRNOxK      K calls fail, from the Nth on
//     short        the Nth call reads or writes one byte; short+ this one and all later ones
//     kill         SIGKILL in place of the Nth call
// ZUNA_FAULT_REPORT=FILE names a file that gets the counts, as struct Report. It is mapped, so it is complete
// whatever ends the process.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zuna_faults {

/// Every wrapper that the library replaces. Names of variants (open64, __open_2) count as the plain one.
enum class Call : std::uint8_t {
  kOpen,
  kOpenat,
  kFopen,
  kFdopen,
  kRead,
  kWrite,
  kWritev,
  kSendfile,
  kClose,
  kFclose,
  kFsync,
  kRename,
  kRenameat,
  kRenameat2,
  kLink,
  kLinkat,
  kSymlink,
  kUnlink,
  kUnlinkat,
  kStat,
  kLstat,
  kFstat,
  kFstatat,
  kFchmod,
  kFchmodat,
  kFchown,
  kFtruncate,
  kTruncate,
  kFallocate,
  kMkdir,
  kRmdir,
  kReadlink,
  kRealpath,
  kAccess,
  kLseek,
  kMmap,
  kMunmap,
  kGetrandom,
  kGetentropy,
  kOpendir,
  kFdopendir,
  kReaddir,
  kClosedir,
  kIsatty,
  kIoctl,
  kFcntl,
  kDup2,
  kPoll,
  kSigaction,
  kSigprocmask,
  kPthreadCreate,
  kMemory,
  kCount
};

/// What the report file holds.
struct Report {
  struct Entry {
    char name[24];        ///< of the call; empty after the last one
    std::uint64_t count;  ///< calls so far
  };
  std::uint64_t any;          ///< calls so far, without allocations
  std::uint64_t fired;        ///< calls that were made to fail
  std::uint64_t at_exit;      ///< 1 when the process has ended by exit(), _exit() or the end of main()
  std::uint64_t descriptors;  ///< then: descriptors that are open and were not at the start
  Entry entries[64];
};

/// What a call has to do.
enum class Verdict : std::uint8_t {
  kProceed,
  kFail,   ///< errno is set
  kShort,  ///< proceed with one byte
};

/// Counts a call and tells what it has to do.
Verdict Decide(Call call);

/// Counts a call that can only succeed or fail.
inline bool Fails(Call call) { return Decide(call) == Verdict::kFail; }

/// Reads the plan from the environment and begins to count. Called when main() begins.
void NoteStart();

/// Completes the report. Called when the process ends by itself.
void NoteExit();

/// For a program that is linked with this library: counts anew from here on, with another plan, written as
/// ZUNA_FAULT is, or with an empty one.
[[gnu::visibility("default")]] void Begin(const char* plan);

/// Ends that plan, and gives the counts since Begin().
[[gnu::visibility("default")]] const Report& End();

}  // namespace zuna_faults
