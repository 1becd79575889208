// A stream buffer over one growing block of memory.

#include "platform/security/plaintext_stream.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace zuna_security {

namespace {

constexpr std::size_t kSmallestBlock = 4096;

}  // namespace

PlaintextBuffer::~PlaintextBuffer() { Wipe({block_.data() + begin_, Size()}); }

void PlaintextBuffer::Assign(kit::MemoryBlock block, std::size_t begin, std::size_t size) {
  Wipe({block_.data() + begin_, Size()});
  block_ = std::move(block);
  begin_ = begin;
  size_ = size;
  SetWritePosition(0);
  SetReadPosition(0);
}

Bytes PlaintextBuffer::Contents() const { return {block_.data() + begin_, Size()}; }

std::size_t PlaintextBuffer::Size() const { return std::max(size_, WritePosition()); }

void PlaintextBuffer::SetReadPosition(std::size_t position) {
  setg(Begin(), Begin() + position, Begin() + Size());
}

void PlaintextBuffer::SetWritePosition(std::size_t position) {
  setp(Begin() + position, reinterpret_cast<char*>(block_.data()) + block_.capacity());
}

void PlaintextBuffer::Reserve(std::size_t count) {
  if (count <= static_cast<std::size_t>(epptr() - pptr())) return;
  const std::size_t read = ReadPosition();
  const std::size_t written = WritePosition();
  size_ = Size();
  const std::size_t used = begin_ + written;
  const std::size_t largest = std::numeric_limits<std::ptrdiff_t>::max();
  if (count > largest - used) throw std::bad_alloc();
  const std::size_t doubled = block_.capacity() <= largest / 2 ? block_.capacity() * 2 : largest;
  block_.Grow(std::max({used + count, doubled, kSmallestBlock}));
  SetWritePosition(written);
  SetReadPosition(read);
}

PlaintextBuffer::int_type PlaintextBuffer::underflow() {
  SetReadPosition(ReadPosition());  // shows what was written meanwhile
  return gptr() < egptr() ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}

PlaintextBuffer::int_type PlaintextBuffer::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  const char byte = traits_type::to_char_type(c);
  xsputn(&byte, 1);
  return c;
}

PlaintextBuffer::int_type PlaintextBuffer::pbackfail(int_type c) {
  if (gptr() == eback()) return traits_type::eof();
  gbump(-1);
  if (!traits_type::eq_int_type(c, traits_type::eof())) *gptr() = traits_type::to_char_type(c);
  return traits_type::not_eof(c);
}

std::streamsize PlaintextBuffer::showmanyc() {
  const std::size_t left = Size() - ReadPosition();
  return left == 0 ? -1 : static_cast<std::streamsize>(left);
}

std::streamsize PlaintextBuffer::xsgetn(char* to, std::streamsize count) {
  if (count > egptr() - gptr()) underflow();
  const std::streamsize taken = std::min(count, static_cast<std::streamsize>(egptr() - gptr()));
  if (taken <= 0) return 0;
  std::memcpy(to, gptr(), static_cast<std::size_t>(taken));
  setg(eback(), gptr() + taken, egptr());
  return taken;
}

std::streamsize PlaintextBuffer::xsputn(const char* from, std::streamsize count) {
  if (count <= 0) return 0;
  Reserve(static_cast<std::size_t>(count));
  std::memcpy(pptr(), from, static_cast<std::size_t>(count));
  setp(pptr() + count, epptr());
  return count;
}

PlaintextBuffer::pos_type PlaintextBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                                   std::ios_base::openmode which) {
  const bool reads = (which & std::ios_base::in) != 0;
  const bool writes = (which & std::ios_base::out) != 0;
  const bool relative = from == std::ios_base::cur;
  if ((!reads && !writes) || (reads && writes && relative)) return off_type(-1);

  size_ = Size();  // the write position may go back
  const auto size = static_cast<off_type>(size_);
  off_type base = from == std::ios_base::end ? size : 0;
  if (relative) base = static_cast<off_type>(reads ? ReadPosition() : WritePosition());
  if (offset < -base || offset > size - base) return off_type(-1);

  const off_type position = base + offset;
  if (reads) SetReadPosition(static_cast<std::size_t>(position));
  if (writes) SetWritePosition(static_cast<std::size_t>(position));
  return position;
}

PlaintextBuffer::pos_type PlaintextBuffer::seekpos(pos_type position, std::ios_base::openmode which) {
  return seekoff(position, std::ios_base::beg, which);
}

}  // namespace zuna_security
