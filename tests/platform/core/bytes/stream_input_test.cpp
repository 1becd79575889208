// Streams that had failed before they are read.

#include "platform/core/bytes/stream_input.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/bytes.h"

namespace {

using zuna_test::MessageOf;

TEST(StreamInput, StreamThatHadFailedIsNotRead) {
  std::istringstream is("abc");
  is.setstate(std::ios_base::eofbit);
  EXPECT_EQ(zuna_core::RemainingBytes(is), 3U) << "the end is no failure";
  is.setstate(std::ios_base::failbit);
  char byte = 0;
  const std::string unreadable = "The stream cannot be read; check where the data comes from";
  EXPECT_EQ(MessageOf<cmn::DataError>([&] { zuna_core::ReadSome(is, &byte, 1); }), unreadable);
  EXPECT_EQ(MessageOf<cmn::DataError>([&] { zuna_core::RemainingBytes(is); }), unreadable);
}

TEST(StreamInput, FailsAsTheMaskOfTheStreamSays) {
  std::istringstream is("abc");
  is.setstate(std::ios_base::failbit);
  EXPECT_THROW(is.exceptions(std::ios_base::failbit), std::ios_base::failure);
  EXPECT_THROW(zuna_core::RemainingBytes(is), std::ios_base::failure);
}

}  // namespace
