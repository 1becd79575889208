#pragma once

// A stream buffer that sees whether every line that is printed is flushed.

#include <cstddef>
#include <exception>
#include <iostream>
#include <streambuf>
#include <string>

namespace zuna_test {

/// Keeps what is written, and counts flushes and the lines whose newline no flush follows directly.
class LineFlushes : public std::streambuf {
 public:
  const std::string& text() const { return text_; }
  int flushes() const { return flushes_; }

  /// The lines that ended without a flush.
  int unflushed_lines() const { return unflushed_ + (EndsUnflushed() ? 1 : 0); }

 protected:
  int_type overflow(int_type c) override {
    Add(traits_type::to_char_type(c));
    return traits_type::not_eof(c);
  }

  std::streamsize xsputn(const char* from, std::streamsize size) override {
    for (std::streamsize i = 0; i < size; ++i) Add(from[i]);
    return size;
  }

  int sync() override {
    ++flushes_;
    flushed_ = text_.size();
    return 0;
  }

 private:
  bool EndsUnflushed() const { return !text_.empty() && text_.back() == '\n' && flushed_ != text_.size(); }

  void Add(char c) {
    if (EndsUnflushed()) ++unflushed_;
    text_.push_back(c);
  }

  std::string text_;
  std::size_t flushed_ = 0;  ///< bytes of the text that were there at the last flush
  int flushes_ = 0;
  int unflushed_ = 0;
};

/// What was printed, and how.
struct PrintedLines {
  std::string text;
  int unflushed_lines;
};

/// What `action` prints to standard output, though it throws.
template <typename Action>
PrintedLines Print(Action action) {
  LineFlushes buffer;
  std::streambuf* const before = std::cout.rdbuf(&buffer);
  try {
    action();
  } catch (const std::exception&) {
    // The caller looks at what was printed before that.
  }
  std::cout.rdbuf(before);
  return {buffer.text(), buffer.unflushed_lines()};
}

}  // namespace zuna_test
