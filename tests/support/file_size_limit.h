// A limit that lets writes stop in the middle.

#pragma once

#include <sys/resource.h>

#include <csignal>

namespace zuna_test {

/// While it lives, no file of this process grows beyond `size` bytes: a write stops in the middle.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &old_limit_);
    const rlimit limit{size, old_limit_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &old_limit_);
    std::signal(SIGXFSZ, old_handler_);
  }

 private:
  void (*old_handler_)(int);
  rlimit old_limit_{};
};

}  // namespace zuna_test
