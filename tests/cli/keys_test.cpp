#include "cli/shared/keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zuna_cli {
namespace {

TEST(Keys, AreOneEmptyKeyWithoutAKeyFile) {
  const Keys keys = LoadKeys({}, true);
  ASSERT_THAT(keys, testing::SizeIs(1));
  EXPECT_THAT(keys[0].material().key, testing::IsEmpty());
  EXPECT_THAT(keys[0].material().iv, testing::IsEmpty());
}

}  // namespace
}  // namespace zuna_cli
