// A stream buffer that fails on purpose.

#include "tests/support/failing_streambuf.h"

#include <algorithm>
#include <stdexcept>

namespace zuna_test {

bool FailingStreambuf::Fails() {
  ++calls_;
  if (options_.fail_at == 0 || calls_ < options_.fail_at) return false;
  if (options_.once && calls_ > options_.fail_at) return false;
  if (options_.by_exception) throw std::runtime_error("the device is gone");
  return true;
}

FailingStreambuf::int_type FailingStreambuf::underflow() {
  if (Fails() || position_ == bytes_.size()) return traits_type::eof();
  return traits_type::to_int_type(bytes_[position_]);
}

FailingStreambuf::int_type FailingStreambuf::uflow() {
  const int_type c = underflow();
  if (!traits_type::eq_int_type(c, traits_type::eof())) ++position_;
  return c;
}

std::streamsize FailingStreambuf::xsgetn(char* to, std::streamsize size) {
  if (Fails()) return 0;
  const std::size_t count = bytes_.copy(to, static_cast<std::size_t>(size), position_);
  position_ += count;
  return static_cast<std::streamsize>(count);
}

FailingStreambuf::int_type FailingStreambuf::overflow(int_type c) {
  const char byte = traits_type::to_char_type(c);
  return xsputn(&byte, 1) == 1 ? traits_type::not_eof(c) : traits_type::eof();
}

std::streamsize FailingStreambuf::xsputn(const char* from, std::streamsize size) {
  if (size == 0 || Fails()) return 0;
  const auto count = static_cast<std::size_t>(size);
  bytes_.replace(position_, std::min(count, bytes_.size() - position_), from, count);
  position_ += count;
  return size;
}

FailingStreambuf::pos_type FailingStreambuf::seekoff(off_type offset, std::ios_base::seekdir from,
                                                     std::ios_base::openmode) {
  const bool tells = offset == 0 && from == std::ios_base::cur;
  if (!(tells && options_.always_tells) && (Fails() || !options_.seekable)) return pos_type(off_type(-1));
  const std::size_t base = from == std::ios_base::beg   ? 0
                           : from == std::ios_base::cur ? position_
                                                        : bytes_.size();
  const off_type target = static_cast<off_type>(base) + offset;
  if (target < 0 || target > static_cast<off_type>(bytes_.size())) return pos_type(off_type(-1));
  position_ = static_cast<std::size_t>(target);
  return pos_type(target);
}

FailingStreambuf::pos_type FailingStreambuf::seekpos(pos_type position, std::ios_base::openmode which) {
  return seekoff(off_type(position), std::ios_base::beg, which);
}

}  // namespace zuna_test
