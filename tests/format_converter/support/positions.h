#pragma once

// Stream buffers that treat the position in a way of their own.

#include <ios>
#include <sstream>
#include <string>

namespace zuna_test {

/// Delivers its bytes, and tells its position `good` times; then it throws instead.
class NoPositionAfter : public std::stringbuf {
 public:
  NoPositionAfter(const std::string& bytes, int good) : std::stringbuf(bytes), good_(good) {}

 protected:
  pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
    if (good_-- <= 0) throw std::ios_base::failure("no position");
    return std::stringbuf::seekoff(offset, from, which);
  }

 private:
  int good_;
};

/// Delivers its bytes, and counts the questions for the position and the moves of it.
class CountedSeeks : public std::stringbuf {
 public:
  explicit CountedSeeks(const std::string& bytes) : std::stringbuf(bytes) {}

  int tells() const { return tells_; }
  int moves() const { return moves_; }

 protected:
  pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
    if (offset == 0 && from == std::ios_base::cur) {
      ++tells_;
    } else {
      ++moves_;
    }
    return std::stringbuf::seekoff(offset, from, which);
  }
  pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
    ++moves_;
    // Not seekpos(): that of libc++ calls the function above, which would count once more.
    return std::stringbuf::seekoff(position, std::ios_base::beg, which);
  }

 private:
  int tells_ = 0;
  int moves_ = 0;
};

}  // namespace zuna_test
