#include "cli/commands/key_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/terminal/failure.h"

namespace zuna_cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(KeyFile, HoldsKeyAndIv) {
  const CipherKey key = ParseKeyFile("# ours\n\nkey = 00fF10\r\n\tiv=a0 # short\n", "k");
  EXPECT_THAT(key.key, ElementsAre(0x00, 0xFF, 0x10));
  EXPECT_THAT(key.iv, ElementsAre(0xA0));
}

TEST(KeyFile, MayHoldEmptyValues) {
  const CipherKey key = ParseKeyFile("iv =\nkey = #none", "k");
  EXPECT_THAT(key.key, IsEmpty());
  EXPECT_THAT(key.iv, IsEmpty());
}

TEST(KeyFile, NamesTheLineAndNeverTheSecret) {
  for (const char* text : {"5EC8E7", "key 5EC8E7", "key = 5EC8E7X0", "key = 5EC8E", "5EC8E7 = key",
                           "= 5EC8E7", "key = 5E C8", "key = 00\nkey = 5EC8E7"}) {
    try {
      ParseKeyFile(text, "k");
      ADD_FAILURE() << "nothing was thrown for " << text;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.code(), ExitCode::kBadInput);
      EXPECT_THAT(failure.what(), testing::MatchesRegex("k: .* \\(line [12]\\); correct the key file"));
      EXPECT_THAT(failure.what(), testing::Not(testing::HasSubstr("5E")));
    }
  }
}

TEST(KeyFile, IsNotNeeded) {
  EXPECT_THAT(LoadKey("").key, IsEmpty());
  EXPECT_THAT(LoadKey("").iv, IsEmpty());
}

}  // namespace
}  // namespace zuna_cli
