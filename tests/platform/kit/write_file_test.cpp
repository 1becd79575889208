// Writing a file in one step: modes, links, pipes, full disks.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <thread>

#include "kit/error.h"
#include "kit/file.h"
#include "tests/support/bytes.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/temporary_folder.h"

namespace {

using zuna_test::FileSizeLimit;
using zuna_test::TemporaryFolder;
using Names = std::vector<std::string>;

void Write(const std::string& path, const std::string& content) {
  kit::WriteFileAtomically(path, zuna_test::FromText(content));
}

std::string Refusal(const std::string& path, const std::string& content) {
  try {
    Write(path, content);
  } catch (const kit::IoError& error) {
    return error.what();
  }
  ADD_FAILURE() << "accepted";
  return "";
}

unsigned Mode(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

constexpr uid_t kNobody = 65534;

/// While it lives, this process has no more rights than any user has.
class NotRoot {
 public:
  NotRoot() : changed_(::geteuid() == 0 && ::seteuid(kNobody) == 0) {}
  NotRoot(const NotRoot&) = delete;
  NotRoot& operator=(const NotRoot&) = delete;
  ~NotRoot() {
    if (changed_ && ::seteuid(0) != 0) std::abort();
  }

 private:
  bool changed_;
};

TEST(WriteFile, NewFileIsTheOwnersOnly) {
  const TemporaryFolder folder;
  const mode_t old_mask = ::umask(0);
  Write(folder / "new", "content");
  ::umask(old_mask);
  EXPECT_EQ(zuna_test::FileText(folder / "new"), "content");
  EXPECT_EQ(Mode(folder / "new"), 0600U);
  EXPECT_EQ(folder.Names(), Names{"new"});
}

TEST(WriteFile, TheUmaskLimitsTheModeOfANewFile) {
  const TemporaryFolder folder;
  const mode_t old_mask = ::umask(0027);
  kit::WriteFileAtomically(folder / "new", zuna_test::FromText("content"), 0666);
  ::umask(old_mask);
  EXPECT_EQ(zuna_test::FileText(folder / "new"), "content");
  EXPECT_EQ(Mode(folder / "new"), 0640U);
}

TEST(WriteFile, ReplacedFileKeepsItsMode) {
  const TemporaryFolder folder;
  for (const unsigned mode : {0640U, 0666U, 0755U}) {
    folder.Put("old", "a longer old content");
    ASSERT_EQ(::chmod((folder / "old").c_str(), mode), 0);
    Write(folder / "old", "new");
    EXPECT_EQ(zuna_test::FileText(folder / "old"), "new");
    EXPECT_EQ(Mode(folder / "old"), mode);
  }
  EXPECT_EQ(folder.Names(), Names{"old"});
}

TEST(WriteFile, DropsSpecialBitsOfTheReplacedFile) {
  const TemporaryFolder folder;
  for (const unsigned special : {04000U, 02000U, 01000U, 07000U}) {
    folder.Put("old", "old");
    ASSERT_EQ(::chmod((folder / "old").c_str(), special | 0755U), 0);
    Write(folder / "old", "new");
    EXPECT_EQ(Mode(folder / "old"), 0755U);
  }
}

/// Replaces a file of this mode that belongs to a group of others; gives the mode and group afterwards.
std::pair<unsigned, gid_t> ReplaceOfGroup(unsigned mode, gid_t group, bool as_root) {
  const TemporaryFolder folder;
  folder.Put("file", "old");
  EXPECT_EQ(::chown(folder.path().c_str(), kNobody, kNobody), 0);
  EXPECT_EQ(::chown((folder / "file").c_str(), kNobody, group), 0);
  EXPECT_EQ(::chmod((folder / "file").c_str(), mode), 0);
  if (as_root) {
    Write(folder / "file", "new");
  } else {
    const NotRoot not_root;
    Write(folder / "file", "new");
  }
  struct stat status {};
  EXPECT_EQ(::stat((folder / "file").c_str(), &status), 0);
  return {status.st_mode & 07777, status.st_gid};
}

TEST(WriteFile, AnotherGroupGetsNoMoreThanOthersHad) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give files to other groups";
  constexpr gid_t kGroup = 54321;
  EXPECT_EQ(ReplaceOfGroup(0640, kGroup, true), std::pair(0640U, kGroup));
  const gid_t own = ::getegid();
  EXPECT_EQ(ReplaceOfGroup(0640, kGroup, false), std::pair(0600U, own));
  EXPECT_EQ(ReplaceOfGroup(0664, kGroup, false), std::pair(0644U, own));
  EXPECT_EQ(ReplaceOfGroup(0604, kGroup, false), std::pair(0600U, own));
  EXPECT_EQ(ReplaceOfGroup(0640, own, false), std::pair(0640U, own));
}

TEST(WriteFile, AnOpenOldFileIsNotChanged) {
  const TemporaryFolder folder;
  folder.Put("file", "old");
  const int old = ::open((folder / "file").c_str(), O_RDONLY);
  Write(folder / "file", "new");
  char text[4] = {};
  EXPECT_EQ(::read(old, text, 3), 3);
  ::close(old);
  EXPECT_STREQ(text, "old");
}

TEST(WriteFile, WritesWithoutAFolderInThePath) {
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  Write("bare", "content");
  std::filesystem::current_path(before);
  EXPECT_EQ(zuna_test::FileText(folder / "bare"), "content");
}

TEST(WriteFile, WritesTheLongestNames) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  Write(folder / name, "content");
  EXPECT_EQ(folder.Names(), Names{name});
}

TEST(WriteFile, ReplacesWhatALinkPointsTo) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path() / "sub");
  folder.Put("sub/file", "old");
  std::filesystem::create_symlink("sub/second", folder.path() / "first");
  std::filesystem::create_symlink("file", folder.path() / "sub/second");
  Write(folder / "first", "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "first"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "sub/second"));
  EXPECT_FALSE(std::filesystem::is_symlink(folder / "sub/file"));
  EXPECT_EQ(zuna_test::FileText(folder / "sub/file"), "new");
}

TEST(WriteFile, CreatesWhatALinkPointsTo) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("absent", folder.path() / "link");
  Write(folder / "link", "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_EQ(zuna_test::FileText(folder / "absent"), "new");
}

TEST(WriteFile, LinksInACircle) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("b", folder.path() / "a");
  std::filesystem::create_symlink("a", folder.path() / "b");
  EXPECT_EQ(Refusal(folder / "a", "x"), folder / "a" + ": cannot be written: " +
                                            std::generic_category().message(ELOOP) + "; check the path");
}

TEST(WriteFile, EmptyPath) {
  EXPECT_EQ(Refusal("", "x"), "\"\": an empty path names no file or folder; give a path");
}

TEST(WriteFile, MissingFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(Refusal(folder / "none/file", "x"),
            folder / "none/file" +
                ": cannot be written (opening its folder): No such file or directory; check the path");
}

TEST(WriteFile, FolderAsTarget) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path() / "sub");
  EXPECT_EQ(Refusal(folder / "sub", "x"),
            folder / "sub" + ": cannot be written: Is a directory; give the path of a file");
  EXPECT_EQ(folder.Names(), Names{"sub"});
}

TEST(WriteFile, FullDevice) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
  EXPECT_EQ(Refusal("/dev/full", "content"),
            "/dev/full: cannot be written: No space left on device; free some space, or "
            "choose "
            "another folder");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(WriteFile, PipesAreWrittenTo) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] { received = zuna_test::FileText(folder / "pipe"); });
  Write(folder / "pipe", std::string(200000, 'p'));
  reader.join();
  EXPECT_EQ(received, std::string(200000, 'p'));
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe"));
}

TEST(WriteFile, AWriteThatFailsMidwayLeavesTheOldFileAndNothingElse) {
  const TemporaryFolder folder;
  folder.Put("file", "old");
  std::string message;
  {
    const FileSizeLimit limit(10000);
    message = Refusal(folder / "file", std::string(100000, 'n'));
  }
  EXPECT_EQ(message,
            folder / "file" +
                ": cannot be written (after 10000 of 100000 bytes): File too large; free some space, or "
                "choose another folder");
  EXPECT_EQ(zuna_test::FileText(folder / "file"), "old");
  EXPECT_EQ(folder.Names(), Names{"file"});
}

TEST(WriteFile, AFailedWriteOfANewFileLeavesNothing) {
  const TemporaryFolder folder;
  {
    const FileSizeLimit limit(10000);
    Refusal(folder / "file", std::string(100000, 'n'));
  }
  EXPECT_EQ(folder.Names(), Names{});
}

TEST(WriteFile, AProtectedFileIsNotReplaced) {
  const TemporaryFolder folder;
  folder.Put("file", "old");
  ASSERT_EQ(::chmod((folder / "file").c_str(), 0444), 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);  // its folder would let it be replaced
  std::string message;
  {
    const NotRoot not_root;
    message = Refusal(folder / "file", "new");
  }
  EXPECT_EQ(message,
            folder / "file" +
                ": cannot be written: Permission denied; check the permissions, or give another path");
  EXPECT_EQ(zuna_test::FileText(folder / "file"), "old");
  EXPECT_EQ(folder.Names(), Names{"file"});
}

TEST(WriteFile, AFileWithoutANameIsRefused) {
  if (!std::filesystem::exists("/proc/self/fd")) GTEST_SKIP() << "no /proc here";
  const TemporaryFolder folder;
  const int file = ::open(folder.Put("file", "old").c_str(), O_RDONLY);
  std::filesystem::remove(folder / "file");
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  EXPECT_EQ(Refusal(link, "new"),
            link + ": leads to a file that has no name, or is being changed; give another path");
  ::close(file);
  EXPECT_EQ(folder.Names(), Names{});
}

}  // namespace
