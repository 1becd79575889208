// kit::BytesAhead() on buffers that can and cannot tell.

#include "kit/stream_size.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using kit::BytesAhead;

TEST(StreamSizeTest, CountsFromTheReadPositionAndLeavesItThere) {
  std::stringbuf buffer("12345");
  EXPECT_EQ(BytesAhead(buffer), 5);
  EXPECT_EQ(buffer.sbumpc(), '1');
  EXPECT_EQ(BytesAhead(buffer), 4);
  EXPECT_EQ(buffer.sbumpc(), '2');
  buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
  EXPECT_EQ(BytesAhead(buffer), 0);
}

/// Tells a position behind its end, or refuses one of the three seeks.
class OddBuffer : public std::streambuf {
 public:
  OddBuffer(std::streamoff here, std::streamoff end, bool goes_back = true)
      : here_(here), end_(end), goes_back_(goes_back) {}

 protected:
  pos_type seekoff(off_type, std::ios_base::seekdir from, std::ios_base::openmode) override {
    return from == std::ios_base::cur ? here_ : end_;
  }
  pos_type seekpos(pos_type position, std::ios_base::openmode) override {
    return goes_back_ ? position : pos_type(off_type(-1));
  }

 private:
  std::streamoff here_;
  std::streamoff end_;
  bool goes_back_;
};

TEST(StreamSizeTest, GivesMinusOneWhereTheBufferCannotTell) {
  OddBuffer no_position(-1, 5);
  EXPECT_EQ(BytesAhead(no_position), -1);
  OddBuffer no_end(0, -1);
  EXPECT_EQ(BytesAhead(no_end), -1);
}

TEST(StreamSizeTest, ThrowsWhereTheBufferDoesNotGoBack) {
  OddBuffer buffer(2, 5, false);
  EXPECT_THROW(BytesAhead(buffer), std::ios_base::failure);
}

TEST(StreamSizeTest, GivesZeroBehindTheEnd) {
  OddBuffer buffer(7, 5);
  EXPECT_EQ(BytesAhead(buffer), 0);
}

}  // namespace
