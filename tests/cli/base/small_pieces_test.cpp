#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/base/errors.h"
#include "cli/base/version_text.h"

namespace zuna_cli {
namespace {

TEST(VersionText, IsReadAndWritten) {
  EXPECT_EQ(ParseVersion("1.2"), (cmn::FileVersion{1, 2}));
  EXPECT_EQ(ParseVersion("255.0"), (cmn::FileVersion{255, 0}));
  EXPECT_EQ(VersionText({1, 10}), "1.10");
  EXPECT_TRUE(ParseVersion(kDefaultVersion));
  for (const char* text :
       {"", ".", "1", "1.", ".2", "1.2.3", "-1.2", "+1.2", " 1.2", "1.2 ", "1.256", "a.b"}) {
    EXPECT_FALSE(ParseVersion(text)) << text;
  }
}

}  // namespace
}  // namespace zuna_cli
