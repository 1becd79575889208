// The parts of cmn::DataError and the message that is composed of them.

#include "cmn/data_error.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace zuna_test {

namespace {

using cmn::DataError;

TEST(DataErrorTest, ComposesItsMessageOfAllParts) {
  const DataError error({.song = "12a",
                         .field = "voice 3, messages[7].time",
                         .offset = 4711,
                         .problem = "cut off",
                         .remedy = "copy it again"});
  EXPECT_STREQ(error.what(),
               R"(song "12a", voice 3, messages[7].time: cut off (at byte 4711); copy it again)");
  EXPECT_EQ(error.song(), "12a");
  EXPECT_EQ(error.field(), "voice 3, messages[7].time");
  EXPECT_EQ(error.offset(), 4711U);
  EXPECT_EQ(error.problem(), "cut off");
  EXPECT_EQ(error.remedy(), "copy it again");
}

TEST(DataErrorTest, LeavesOutPartsThatAreAbsent) {
  EXPECT_STREQ(DataError("damaged").what(), "damaged");
  EXPECT_STREQ(DataError("damaged", "copy it again").what(), "damaged; copy it again");
  EXPECT_STREQ(DataError(DataError::Parts{.song = "1\n", .problem = "damaged"}).what(),
               R"(song "1\x0A": damaged)");
  EXPECT_STREQ(DataError(DataError::Parts{.field = "songs[0]", .offset = 0, .problem = "damaged"}).what(),
               "songs[0]: damaged (at byte 0)");
  const DataError error("damaged");
  EXPECT_FALSE(error.song());
  EXPECT_FALSE(error.offset());
  EXPECT_EQ(error.field() + error.remedy(), "");
}

TEST(DataErrorTest, IsCopiedWithoutThrowing) {
  static_assert(std::is_nothrow_copy_constructible_v<DataError>);
  static_assert(std::is_nothrow_copy_constructible_v<cmn::UnsupportedVersionError>);
  static_assert(std::is_base_of_v<DataError, cmn::UnsupportedVersionError>);
  const cmn::UnsupportedVersionError error("version 9.9 is not supported", "use 1.2");
  const DataError copy = error;
  EXPECT_STREQ(copy.what(), error.what());
  EXPECT_EQ(copy.remedy(), "use 1.2");
}

}  // namespace

}  // namespace zuna_test
