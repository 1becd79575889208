// What one thread prints to standard output.

#include "tests/threads/printed_by_thread.h"

#include <iostream>
#include <streambuf>
#include <utility>

namespace zuna_test {

namespace {

thread_local std::string printed;

class ThreadBuffer : public std::streambuf {
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    printed.append(text, static_cast<std::size_t>(length));
    return length;
  }
  int_type overflow(int_type character) override {
    if (!traits_type::eq_int_type(character, traits_type::eof()))
      printed.push_back(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
  }
};

ThreadBuffer thread_buffer;
std::streambuf* standard_buffer = nullptr;

}  // namespace

PrintedByThread::PrintedByThread() { standard_buffer = std::cout.rdbuf(&thread_buffer); }

PrintedByThread::~PrintedByThread() { std::cout.rdbuf(standard_buffer); }

std::string PrintedByThread::Take() { return std::exchange(printed, {}); }

}  // namespace zuna_test
