// When collected text reaches standard output.

#include "kit/cout_buffer.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

TEST(CoutBuffer, HoldsTextBackUntilFlushed) {
  testing::internal::CaptureStdout();
  kit::CoutBuffer buffer;
  buffer.stream() << "one " << 2;
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  testing::internal::CaptureStdout();
  buffer.Flush();
  buffer.Flush();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "one 2");
}

TEST(CoutBuffer, WritesTheRestWhenDestroyed) {
  testing::internal::CaptureStdout();
  { kit::CoutBuffer().stream() << "rest"; }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "rest");
}

}  // namespace
