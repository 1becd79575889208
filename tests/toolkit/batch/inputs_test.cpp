#include "toolkit/batch/inputs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/temporary_folder.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using zuna_test::TemporaryFolder;

std::vector<std::string> RelativePaths(const std::vector<Input>& inputs) {
  std::vector<std::string> paths;
  for (const Input& input : inputs) paths.push_back(input.relative);
  return paths;
}

/// A folder with shows and logs, and with what is neither.
class FindInputsTest : public testing::Test {
 protected:
  FindInputsTest() {
    std::filesystem::create_directories(folder_.path() / "sub/deep");
    std::filesystem::create_directories(folder_.path() / "folder.showdata");
    for (const char* name : {"b.showdata", "a.logdata", ".h.showdata", "c.SHOWDATA.old", "d.showdata.~1~",
                             "e.txt", "sub/x.showdata", "sub/deep/y.logdata", "folder.showdata/z.showdata"}) {
      folder_.Put(name, "");
    }
    ::mkfifo((folder_ / "pipe.showdata").c_str(), 0600);
    std::filesystem::create_symlink("b.showdata", folder_.path() / "link.showdata");
    std::filesystem::create_symlink("pipe.showdata", folder_.path() / "link-to-pipe.showdata");
    std::filesystem::create_symlink("gone", folder_.path() / "dangling.showdata");
    std::filesystem::create_directory_symlink("..", folder_.path() / "sub/up");
  }

  std::vector<std::string> Found(const FolderSearch& search) const {
    return RelativePaths(FindInputs({folder_.path().string()}, search));
  }

  TemporaryFolder folder_;
};

TEST_F(FindInputsTest, TakesShowsAndLogsOfAFolder) {
  EXPECT_THAT(Found({}), ElementsAre("a.logdata", "b.showdata", "dangling.showdata", "link.showdata"));
  const std::vector<Input> inputs = FindInputs({folder_.path().string()}, {});
  EXPECT_EQ(inputs[0].path, folder_ / "a.logdata");
}

TEST_F(FindInputsTest, TakesFoldersBelow) {
  EXPECT_THAT(Found({true, ""}),
              ElementsAre("a.logdata", "b.showdata", "dangling.showdata", "folder.showdata/z.showdata",
                          "link.showdata", "sub/deep/y.logdata", "sub/x.showdata"));
}

TEST_F(FindInputsTest, PassesOverAFolder) {
  EXPECT_THAT(Found({true, (folder_.path() / "." / "sub").string()}),
              ElementsAre("a.logdata", "b.showdata", "dangling.showdata", "folder.showdata/z.showdata",
                          "link.showdata"));
}

TEST_F(FindInputsTest, TakesEveryFileThatIsNamed) {
  const std::vector<Input> inputs =
      FindInputs({folder_ / "e.txt", "-", folder_ / "none", folder_ / "sub"}, {});
  EXPECT_THAT(RelativePaths(inputs), ElementsAre("e.txt", "-", "none", "x.showdata"));
  EXPECT_EQ(inputs[1].path, "-");
}

TEST_F(FindInputsTest, TakesAFolderThatCannotBeListed) {
  const std::string closed = folder_ / "closed";
  std::filesystem::create_directory(closed);
  std::filesystem::permissions(closed, std::filesystem::perms::none);
  if (::geteuid() == 0) GTEST_SKIP() << "the superuser lists every folder";
  const std::vector<Input> inputs = FindInputs({closed}, {});
  ASSERT_EQ(inputs.size(), 1U);
  EXPECT_EQ(inputs[0].path, closed);
}

TEST(ShowOrLogName, EndsLikeAShowOrALogAndIsNotHidden) {
  EXPECT_TRUE(IsShowOrLogName("a.showdata"));
  EXPECT_TRUE(IsShowOrLogName("a b.logdata"));
  EXPECT_TRUE(IsShowOrLogName("A.SHOWDATA"));
  EXPECT_TRUE(IsShowOrLogName("a.LogData"));
  for (const char* name : {".a.showdata", ".showdata", "a.showdata~", "a.showdata.~1~", "showdata", ""}) {
    EXPECT_FALSE(IsShowOrLogName(name)) << name;
  }
}

TEST(OtherKindPath, HasTheSameStem) {
  EXPECT_EQ(OtherKindPath("a/opera.showdata"), "a/opera.logdata");
  EXPECT_EQ(OtherKindPath("a/opera.logdata"), "a/opera.showdata");
  EXPECT_EQ(OtherKindPath("OPERA.SHOWDATA"), "OPERA.LOGDATA");
  EXPECT_EQ(OtherKindPath("OPERA.LOGDATA"), "OPERA.SHOWDATA");
  EXPECT_EQ(OtherKindPath("Opera.ShowData"), "Opera.logdata");
  EXPECT_EQ(OtherKindPath("a.logdata/opera"), std::nullopt);
  EXPECT_EQ(OtherKindPath("-"), std::nullopt);
}

/// The index from 0 of the shard that has `path`; `count` where none has it.
std::uint64_t ShardOf(std::string_view path, std::uint64_t count) {
  for (std::uint64_t index = 1; index <= count; ++index) {
    if (IsInShard(path, {index, count})) return index - 1;
  }
  return count;
}

// FNV-1a of "a" is 0xaf63dc4c8601ec8c and of "foobar" 0x85944171f73967e8, as published with it.
TEST(Shard, FollowsTheMixedHash) {
  constexpr std::uint64_t kCount = 1000;
  EXPECT_EQ(ShardOf("a", kCount), 0x02c0bdbf481420f8 % kCount);
  EXPECT_EQ(ShardOf("foobar", kCount), 0x404da9e3b74078c2 % kCount);
}

TEST(Shard, IsThatOfEverySpelling) {
  EXPECT_EQ(ShardOf("./a", 1000), ShardOf("a", 1000));
  EXPECT_EQ(ShardOf("b//.././a", 1000), ShardOf("a", 1000));
}

TEST(Shard, HasAboutAsManyPathsAsTheOthers) {
  for (const std::uint64_t count : {2U, 4U, 16U, 64U}) {
    std::vector<int> paths(count + 1);
    for (int i = 0; i < 1000; ++i) {
      const std::string name = "p" + std::to_string(i);
      ++paths.at(ShardOf(name + "/" + name + ".showdata", count));
    }
    for (std::uint64_t shard = 0; shard < count; ++shard) {
      EXPECT_GT(paths[shard] * static_cast<int>(count), 500) << shard << " of " << count;
      EXPECT_LT(paths[shard] * static_cast<int>(count), 2000) << shard << " of " << count;
    }
  }
}

TEST(Shard, HasEveryPathOnce) {
  for (int i = 0; i < 1000; ++i) {
    const std::string path = std::to_string(i) + ".showdata";
    int shards = 0;
    for (std::uint64_t index = 1; index <= 7; ++index) shards += IsInShard(path, {index, 7}) ? 1 : 0;
    EXPECT_EQ(shards, 1);
  }
}

}  // namespace
}  // namespace zuna_toolkit
