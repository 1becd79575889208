// A process that has no file descriptors left.

#pragma once

#include <sys/resource.h>

namespace zuna_test {

/// While this lives, nothing can be opened: neither a file nor a folder.
class NothingOpens {
 public:
  NothingOpens() {
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit none{0, before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  NothingOpens(const NothingOpens&) = delete;
  NothingOpens& operator=(const NothingOpens&) = delete;
  ~NothingOpens() { setrlimit(RLIMIT_NOFILE, &before_); }

 private:
  rlimit before_{};
};

}  // namespace zuna_test
