// A stream buffer that fails on purpose.

#pragma once

#include <cstddef>
#include <string>

#include <streambuf>

namespace zuna_test {

/// Bytes in memory as a stream buffer that fails on purpose, with one position for reading and writing.
/// Reads, writes and seeks count as calls; from the `fail_at`-th call on (counted from 1; 0 means never)
/// every call fails, or with `once` that one only: by an exception with `by_exception`, else by reading or
/// writing nothing and by refusing to seek.
class FailingStreambuf : public std::streambuf {
 public:
  struct Options {
    std::size_t fail_at = 0;
    bool once = false;
    bool by_exception = false;
    bool seekable = true;       ///< else every seek is refused, as by a pipe
    bool always_tells = false;  ///< telling the position does not count as a call and never fails
  };

  FailingStreambuf(std::string bytes, Options options) : bytes_(std::move(bytes)), options_(options) {}

  std::size_t calls() const { return calls_; }
  const std::string& bytes() const { return bytes_; }

 protected:
  int_type underflow() override;
  int_type uflow() override;
  std::streamsize xsgetn(char* to, std::streamsize size) override;
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* from, std::streamsize size) override;
  pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override;
  pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

 private:
  /// Whether this call, one more, is to fail.
  bool Fails();

  std::string bytes_;
  Options options_;
  std::size_t position_ = 0;
  std::size_t calls_ = 0;
};

}  // namespace zuna_test
