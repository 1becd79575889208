// System calls of this process that fail on request.

#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace failing_calls {

/// A call that fails: "close", "fstatat", "fsync", "getentropy", "getrandom", "linkat", "openat", "read",
/// "renameat", "renameat2", "unlinkat" or "write".
struct Failure {
  std::string call;
  int error;                             ///< what errno is then
  int number = 0;                        ///< which of these calls, from 1; 0 for all
  std::function<void()> meanwhile = {};  ///< what other programs do at this moment
  bool later = false;                    ///< all later ones fail too
};

/// While it lives, calls of this process fail. Calls in `meanwhile` do not.
class Failures {
 public:
  explicit Failures(std::vector<Failure> failures);
  Failures(const Failures&) = delete;
  Failures& operator=(const Failures&) = delete;
  ~Failures();

  /// Counts a call. Returns what errno it fails with, or 0.
  int Count(const std::string& call);

 private:
  std::vector<Failure> failures_;
  std::map<std::string, int> counts_;
  bool is_active_ = true;
};

}  // namespace failing_calls
