// The stream over a decrypted file.

#pragma once

#include <cstddef>
#include <iostream>
#include <streambuf>

#include "kit/memory_block.h"
#include "platform/security/secret.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_security {

/// Holds a plaintext in one block. Behaves like std::stringbuf in read-write mode: read and write positions
/// are independent, and a read sees everything that was written. Unlike it, takes the block over and hands it
/// out without a copy, and wipes it when destroyed.
class PlaintextBuffer final : public std::streambuf {
 public:
  PlaintextBuffer() = default;
  PlaintextBuffer(const PlaintextBuffer&) = delete;
  PlaintextBuffer& operator=(const PlaintextBuffer&) = delete;
  ~PlaintextBuffer() override;

  /// Takes over the `size` bytes that begin at `begin` in `block`; both positions go to the beginning.
  void Assign(kit::MemoryBlock block, std::size_t begin, std::size_t size);

  /// Everything written so far. Valid until the next write.
  Bytes Contents() const;

 protected:
  int_type underflow() override;
  int_type overflow(int_type c) override;
  int_type pbackfail(int_type c) override;
  std::streamsize showmanyc() override;
  std::streamsize xsgetn(char* to, std::streamsize count) override;
  std::streamsize xsputn(const char* from, std::streamsize count) override;
  pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override;
  pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

 private:
  char* Begin() const { return reinterpret_cast<char*>(block_.data()) + begin_; }
  std::size_t ReadPosition() const { return static_cast<std::size_t>(gptr() - Begin()); }
  std::size_t WritePosition() const { return static_cast<std::size_t>(pptr() - Begin()); }
  std::size_t Size() const;

  void SetReadPosition(std::size_t position);
  void SetWritePosition(std::size_t position);

  /// Makes room for `count` more bytes at the write position. Throws std::bad_alloc.
  void Reserve(std::size_t count);

  kit::MemoryBlock block_;
  std::size_t begin_ = 0;  // where the plaintext begins in block_
  std::size_t size_ = 0;   // its size, unless the write position is further on
};

}  // namespace zuna_security

namespace zuna_sec {

/// What CipherStream::GetStream() returns.
class PlaintextStream final : public std::iostream {
 public:
  PlaintextStream() : std::iostream(nullptr) { rdbuf(&buffer_); }

  zuna_security::PlaintextBuffer& buffer() { return buffer_; }

 private:
  zuna_security::PlaintextBuffer buffer_;
};

}  // namespace zuna_sec
