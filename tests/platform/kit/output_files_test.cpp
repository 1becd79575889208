// Files that take their places together, and what other programs do meanwhile.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "kit/error.h"
#include "kit/file.h"
#include "tests/support/bytes.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/temporary_folder.h"

namespace {

using zuna_test::TemporaryFolder;
using Names = std::vector<std::string>;

unsigned Mode(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

/// A set of files below `folder` that are written and not yet in their places.
class Written {
 public:
  Written(const TemporaryFolder& folder, kit::Existing existing, const Names& names) : files_(existing) {
    for (const std::string& name : names) files_.Add(folder / name);
    for (std::size_t i = 0; i < names.size(); ++i)
      files_.Write(i, zuna_test::FromText("new " + names[i]), 0666);
  }

  void Commit() { files_.Commit(); }

  std::string Refusal() {
    try {
      files_.Commit();
    } catch (const kit::RuntimeError& error) {
      return error.what();
    }
    ADD_FAILURE() << "accepted";
    return "";
  }

 private:
  kit::OutputFiles files_;
};

std::string PrivateFolder(const TemporaryFolder& folder) {
  const std::string name = folder.Names().front();
  EXPECT_TRUE(name.starts_with(".zuna-") && name.ends_with(".tmp")) << name;
  return folder / name;
}

TEST(OutputFiles, OnlyTheOwnerReachesThemBeforeTheyHaveTheirPlaces) {
  const TemporaryFolder folder;
  folder.Put("b", "old");
  ASSERT_EQ(::chmod((folder / "b").c_str(), 0644), 0);
  const mode_t old_mask = ::umask(0);
  Written files(folder, kit::Existing::kReplace, {"a", "b"});
  ::umask(old_mask);
  EXPECT_EQ(folder.Names().size(), 2U);
  EXPECT_EQ(Mode(PrivateFolder(folder)), 0700U);
  EXPECT_EQ(zuna_test::FileText(folder / "b"), "old");
  files.Commit();
  EXPECT_EQ(folder.Names(), (Names{"a", "b"}));
  EXPECT_EQ(Mode(folder / "a"), 0666U);
  EXPECT_EQ(Mode(folder / "b"), 0644U);
  EXPECT_EQ(zuna_test::FileText(folder / "a"), "new a");
  EXPECT_EQ(zuna_test::FileText(folder / "b"), "new b");
}

TEST(OutputFiles, WithoutCommitNothingIsLeft) {
  const TemporaryFolder folder;
  folder.Put("b", "old");
  { const Written files(folder, kit::Existing::kReplace, {"a", "b"}); }
  EXPECT_EQ(folder.Names(), Names{"b"});
  EXPECT_EQ(zuna_test::FileText(folder / "b"), "old");
}

TEST(OutputFiles, APathThatIsRefusedIsNoneOfThem) {
  const TemporaryFolder folder;
  kit::OutputFiles files(kit::Existing::kReplace);
  EXPECT_THROW(files.Add(folder / "none/a"), kit::IoError);
  EXPECT_THROW(files.Add(""), kit::IoError);
  EXPECT_EQ(files.size(), 0U);
  files.Add(folder / "a");
  files.Write(0, zuna_test::FromText("new"));
  files.Commit();
  EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(OutputFiles, AFileWithoutAllItsBytesGetsNoPlace) {
  const TemporaryFolder folder;
  folder.Put("b", "old");
  {
    kit::OutputFiles files(kit::Existing::kReplace);
    files.Add(folder / "a");
    files.Add(folder / "b");
    files.Write(0, zuna_test::FromText("new"));
    EXPECT_THROW(files.Commit(), std::logic_error);
    const zuna_test::FileSizeLimit limit(10000);
    EXPECT_THROW(files.Write(1, std::vector<std::uint8_t>(100000)), kit::IoError);
    EXPECT_THROW(files.Commit(), std::logic_error);
  }
  EXPECT_EQ(folder.Names(), Names{"b"});
  EXPECT_EQ(zuna_test::FileText(folder / "b"), "old");
}

TEST(OutputFiles, AFileThatExistsIsRefusedAtOnce) {
  const TemporaryFolder folder;
  folder.Put("a", "old");
  kit::OutputFiles files(kit::Existing::kRefuse);
  EXPECT_THROW(files.Add(folder / "a"), kit::FileExistsError);
}

TEST(OutputFiles, AFileThatAppearsMeanwhileIsNotReplaced) {
  const TemporaryFolder folder;
  Written files(folder, kit::Existing::kRefuse, {"a", "b", "c"});
  folder.Put("c", "of another program");
  EXPECT_EQ(files.Refusal(),
            folder / "c" + ": has appeared meanwhile and is not replaced; give another path");
  EXPECT_EQ(folder.Names(), Names{"c"});
  EXPECT_EQ(zuna_test::FileText(folder / "c"), "of another program");
}

TEST(OutputFiles, AFileThatAppearsMeanwhileIsReplacedOnRequest) {
  const TemporaryFolder folder;
  Written files(folder, kit::Existing::kReplace, {"a"});
  folder.Put("a", "of another program");
  ASSERT_EQ(::chmod((folder / "a").c_str(), 0604), 0);
  files.Commit();
  EXPECT_EQ(zuna_test::FileText(folder / "a"), "new a");
  EXPECT_EQ(Mode(folder / "a"), 0604U);
}

TEST(OutputFiles, AFailureInTheMiddlePutsEveryOldFileBack) {
  const TemporaryFolder folder;
  folder.Put("a", "old a");
  folder.Put("b", "old b");
  ASSERT_EQ(::chmod((folder / "b").c_str(), 0640), 0);
  Written files(folder, kit::Existing::kReplace, {"a", "b", "new", "c"});
  std::filesystem::create_directory(folder / "c");
  EXPECT_EQ(files.Refusal(), folder / "c" + ": cannot be written: Is a directory; give the path of a file");
  EXPECT_EQ(folder.Names(), (Names{"a", "b", "c"}));
  EXPECT_EQ(zuna_test::FileText(folder / "a"), "old a");
  EXPECT_EQ(zuna_test::FileText(folder / "b"), "old b");
  EXPECT_EQ(Mode(folder / "b"), 0640U);
}

TEST(OutputFiles, ALinkThatIsPlantedMeanwhileIsNotFollowed) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  elsewhere.Put("victim", "untouched");
  for (const bool exists : {false, true}) {
    for (const std::string victim : {"victim", "absent"}) {
      if (exists) folder.Put("a", "old");
      Written files(folder, kit::Existing::kReplace, {"a"});
      std::filesystem::remove(folder / "a");
      std::filesystem::create_symlink(elsewhere / victim, folder / "a");
      EXPECT_EQ(files.Refusal(),
                folder / "a" + ": cannot be written: Not a regular file; give the path of a file");
      std::filesystem::remove(folder / "a");
    }
  }
  Written files(folder, kit::Existing::kRefuse, {"a"});
  std::filesystem::create_symlink(elsewhere / "absent", folder / "a");
  EXPECT_EQ(files.Refusal(),
            folder / "a" + ": has appeared meanwhile and is not replaced; give another path");
  EXPECT_EQ(elsewhere.Names(), Names{"victim"});
  EXPECT_EQ(zuna_test::FileText(elsewhere / "victim"), "untouched");
}

TEST(OutputFiles, ALinkThatIsPlantedBeforeTheWriteIsAFileThatExists) {
  const TemporaryFolder folder;
  {
    kit::OutputFiles files(kit::Existing::kRefuse);
    files.Add(folder / "a");
    std::filesystem::create_symlink("absent", folder / "a");
    EXPECT_THROW(files.Write(0, {}), kit::FileExistsError);
  }
  EXPECT_EQ(folder.Names(), Names{"a"});
}

TEST(OutputFiles, ALinkIsFollowedOnce) {
  const TemporaryFolder folder;
  folder.Put("first", "old");
  folder.Put("second", "untouched");
  std::filesystem::create_symlink("first", folder / "link");
  Written files(folder, kit::Existing::kReplace, {"link"});
  std::filesystem::remove(folder / "link");
  std::filesystem::create_symlink("second", folder / "link");
  files.Commit();
  EXPECT_EQ(zuna_test::FileText(folder / "first"), "new link");
  EXPECT_EQ(zuna_test::FileText(folder / "second"), "untouched");
}

TEST(OutputFiles, LinksThatTheSystemDoesNotFollowAreNotFollowed) {
  const TemporaryFolder folder;
  std::filesystem::create_directory_symlink(".", folder / "here");
  std::filesystem::create_symlink("here/file", folder / "link0");
  for (int i = 1; i < 35; ++i) {  // with "here", too many for the system
    std::filesystem::create_symlink("here/link" + std::to_string(i - 1), folder / "link" + std::to_string(i));
  }
  kit::OutputFiles files(kit::Existing::kRefuse);
  files.Add(folder / "link5");
  EXPECT_THROW(files.Add(folder / "link34"), kit::IoError);
  folder.Put("file", "old");
  kit::OutputFiles replacing(kit::Existing::kReplace);
  EXPECT_THROW(replacing.Add(folder / "link34"), kit::IoError);
}

TEST(OutputFiles, AFolderThatIsExchangedMeanwhileIsNotFollowed) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  std::filesystem::create_directory(folder / "other");
  Written files(folder, kit::Existing::kReplace, {"sub/a"});
  std::filesystem::rename(folder / "sub", folder / "moved");
  std::filesystem::create_symlink("other", folder / "sub");
  files.Commit();
  EXPECT_EQ(zuna_test::FileText(folder / "moved/a"), "new sub/a");
  EXPECT_TRUE(std::filesystem::is_empty(folder / "other"));
}

TEST(OutputFiles, TwoPathsThatLeadToOneFileAreRefused) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "a");
  std::filesystem::create_symlink("a", folder / "b");
  for (const kit::Existing existing : {kit::Existing::kRefuse, kit::Existing::kReplace}) {
    Written files(folder, existing, {"a/x", "a/y", "b/x"});
    EXPECT_EQ(files.Refusal(),
              folder / "b/x" + ": leads to the file of another output; give each output a path of its own");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "a"));
  }
  folder.Put("a/x", "old");
  Written files(folder, kit::Existing::kReplace, {"a/x", "b/x"});
  EXPECT_NE(files.Refusal(), "");
  EXPECT_EQ(zuna_test::FileText(folder / "a/x"), "old");
}

TEST(OutputFiles, NamesOfOneOldFileAreSeparateOutputs) {
  const TemporaryFolder folder;
  folder.Put("a", "old");
  std::filesystem::create_hard_link(folder / "a", folder / "b");
  Written files(folder, kit::Existing::kReplace, {"a", "b"});
  files.Commit();
  EXPECT_EQ(zuna_test::FileText(folder / "a"), "new a");
  EXPECT_EQ(zuna_test::FileText(folder / "b"), "new b");
}

TEST(OutputFiles, AFolderIsOpenOnceWhateverLeadsToIt) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  Names names;
  for (int i = 0; i < 100; ++i) {
    names.push_back("link" + std::to_string(i));
    std::filesystem::create_symlink("sub/" + std::to_string(i), folder / names.back());
  }
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  const rlimit few{50, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
  {
    Written files(folder, kit::Existing::kReplace, names);
    files.Commit();
  }
  ::setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(zuna_test::FileText(folder / "sub/99"), "new link99");
}

TEST(OutputFiles, OneOfManyThreadsCreatesAFile) {
  const TemporaryFolder folder;
  for (int round = 0; round < 50; ++round) {
    const std::string path = folder / std::to_string(round);
    std::atomic<int> created = 0;
    std::atomic<int> refused = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        try {
          kit::OutputFiles files(kit::Existing::kRefuse);
          files.Add(path);
          files.Write(0, zuna_test::FromText("content"));
          files.Commit();
          ++created;
        } catch (const kit::FileExistsError&) {
          ++refused;
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(created, 1);
    EXPECT_EQ(refused, 3);
  }
}

}  // namespace
