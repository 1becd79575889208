// Collects text in memory and writes it to std::cout.

#include "kit/cout_buffer.h"

#include <iostream>
#include <sstream>

namespace kit {

struct CoutBuffer::Text {
  // By itself the stream would drop what it has no memory for.
  Text() { stream.exceptions(std::ios_base::badbit); }

  std::ostringstream stream;
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

void CoutBuffer::Flush() {
  const std::string collected = text_->stream.str();
  text_->stream.str({});
  std::cout << collected << std::flush;
}

}  // namespace kit
