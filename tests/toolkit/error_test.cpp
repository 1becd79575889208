#include "toolkit/error.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace zuna_toolkit {
namespace {

static_assert(std::is_nothrow_copy_constructible_v<Error>);

TEST(Error, SaysFileProblemAndRemedy) {
  const Error error(ErrorKind::kWrongKey, "a.showdata", "needs another key", "give the right key file");
  EXPECT_STREQ(error.what(), "a.showdata: needs another key; give the right key file");
  EXPECT_EQ(error.kind(), ErrorKind::kWrongKey);
  EXPECT_EQ(error.parts().file, "a.showdata");
  EXPECT_EQ(error.parts().problem, "needs another key");
  EXPECT_EQ(error.parts().remedy, "give the right key file");
}

TEST(Error, SaysNothingAboutWhatItLacks) {
  EXPECT_STREQ(Error(ErrorKind::kIo, "", "problem", "").what(), "problem");
}

TEST(Error, GetsItsFileLater) {
  ErrorParts parts;
  parts.problem = "is wrong";
  parts.song = "12a";
  parts.field = "timeline.tempos[3]";
  parts.offset = 40;
  const Error error = Error(ErrorKind::kBadInput, parts).WithFile("b");
  EXPECT_STREQ(error.what(), "b: is wrong");
  EXPECT_EQ(error.parts().song, "12a");
  EXPECT_EQ(error.parts().field, "timeline.tempos[3]");
  EXPECT_EQ(error.parts().offset, 40U);
}

}  // namespace
}  // namespace zuna_toolkit
