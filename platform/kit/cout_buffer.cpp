// Collects text in memory and writes it to std::cout.

#include "kit/cout_buffer.h"

#include <iostream>
#include <streambuf>
#include <string>
#include <utility>

namespace kit {

namespace {

/// Collects in a string that can be printed without a copy, which might lack memory.
class Collected : public std::streambuf {
 public:
  std::string Take() { return std::exchange(text_, {}); }

 protected:
  int_type overflow(int_type c) override {
    if (!traits_type::eq_int_type(c, traits_type::eof())) text_ += traits_type::to_char_type(c);
    return traits_type::not_eof(c);
  }

  std::streamsize xsputn(const char* from, std::streamsize count) override {
    text_.append(from, static_cast<std::size_t>(count));
    return count;
  }

 private:
  std::string text_;
};

}  // namespace

struct CoutBuffer::Text {
  // By itself the stream would drop what it has no memory for.
  Text() : stream(&collected) { stream.exceptions(std::ios_base::badbit); }

  Collected collected;
  std::ostream stream;
};

CoutBuffer::CoutBuffer() : text_(std::make_unique<Text>()) {}

CoutBuffer::~CoutBuffer() {
  try {
    Flush();
  } catch (...) {
    // Standard output failed, and a destructor cannot report it.
  }
}

std::ostream& CoutBuffer::stream() { return text_->stream; }

void CoutBuffer::Flush() { std::cout << text_->collected.Take() << std::flush; }

}  // namespace kit
