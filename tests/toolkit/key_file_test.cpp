#include "toolkit/key_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(KeyFile, HoldsKeyAndIv) {
  const SecretKey key = ParseKeyFile("# ours\n\nkey = 00fF10\r\n\tiv=a0 # short\n", "k", false);
  EXPECT_THAT(key.material().key, ElementsAre(0x00, 0xFF, 0x10));
  EXPECT_THAT(key.material().iv, ElementsAre(0xA0));
}

TEST(KeyFile, IsReadInAnyCaseAndWithAByteOrderMark) {
  const SecretKey key = ParseKeyFile("\xEF\xBB\xBFKEY = aBCd\r\nIv = EF\r\n", "k", false);
  EXPECT_THAT(key.material().key, ElementsAre(0xAB, 0xCD));
  EXPECT_THAT(key.material().iv, ElementsAre(0xEF));
  EXPECT_THROW(ParseKeyFile("key = 00\n\xEF\xBB\xBFiv = 00", "k", false), Error);
  EXPECT_THROW(ParseKeyFile("kei = 00\niv = 00", "k", false), Error);
}

TEST(KeyFile, MayHoldAnEmptyIv) {
  EXPECT_THAT(ParseKeyFile("iv =\nkey = 00", "k", false).material().iv, IsEmpty());
}

TEST(KeyFile, HoldsAnEmptyKeyOnlyWhereThatIsAllowed) {
  for (const char* text : {"", "\n# none\n", "key =\niv = 00", "key = #none\niv =", "iv = 00"}) {
    EXPECT_THAT(ParseKeyFile(text, "k", true).material().key, IsEmpty()) << text;
    try {
      ParseKeyFile(text, "k", false);
      ADD_FAILURE() << "nothing was thrown for " << text;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kEmptyKey);
      EXPECT_STREQ(
          error.what(),
          "k: states no key, and an empty one protects nothing; give it a line \"key = HEX\", or give "
          "--empty-key");
    }
  }
  EXPECT_THAT(ParseKeyFile("iv = 07", "k", true).material().iv, ElementsAre(7));
}

TEST(KeyFile, NamesTheLineAndNeverTheSecret) {
  for (const char* text : {"5EC8E7", "key 5EC8E7", "key = 5EC8E7X0", "key = 5EC8E", "5EC8E7 = key",
                           "= 5EC8E7", "key = 5E C8", "key = 00\nKEY = 5EC8E7"}) {
    try {
      ParseKeyFile(text, "k", false);
      ADD_FAILURE() << "nothing was thrown for " << text;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kBadKeyFile);
      EXPECT_THAT(error.what(), testing::MatchesRegex("k: .* \\(line [12]\\); correct the key file"));
      EXPECT_THAT(error.what(), Not(HasSubstr("5E")));
    }
  }
}

}  // namespace
}  // namespace zuna_toolkit
