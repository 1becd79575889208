// Files written by an earlier version of this library read the same, and are written the same.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/platform/core/file/kinds.h"

namespace {

std::string GoldenFile(const std::string& name) {
  std::ifstream file(std::string(GOLDEN_FILES "/").append(name), std::ios_base::binary);
  EXPECT_TRUE(file.is_open()) << name;
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

template <typename Kind>
class GoldenFiles : public testing::Test {};

using Kinds = testing::Types<zuna_test::ShowKind, zuna_test::LogKind>;
TYPED_TEST_SUITE(GoldenFiles, Kinds);

TYPED_TEST(GoldenFiles, ReadAndAreWrittenTheSameInEveryVersion) {
  const std::string kind(cmn::KindName(TypeParam::kKind));
  for (const char* content : {"empty", "every-list", "any-values"}) {
    const std::string stem = "good-" + kind + "-" + content + "-";
    for (const cmn::FileVersion& from : zuna_test::Versions<TypeParam>()) {
      const std::string bytes = GoldenFile(stem + cmn::VersionText(from));
      const auto model = zuna_test::Read<typename TypeParam::Model>(bytes);
      for (const cmn::FileVersion& to : zuna_test::Versions<TypeParam>()) {
        EXPECT_EQ(zuna_test::Write(model, to), GoldenFile(stem + cmn::VersionText(to)))
            << stem << cmn::VersionText(from);
      }
    }
  }
}

}  // namespace
