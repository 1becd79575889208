// Replacing files in one step: modes, links, pipes, full disks.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "kit/error.h"
#include "kit/file.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace {

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

TEST(AtomicFile, NewFileIsTheOwnersOnly) {
  const TemporaryFolder folder;
  const mode_t old_mask = ::umask(0);
  Write(folder / "new", "content");
  ::umask(old_mask);
  EXPECT_EQ(zuna_test::FileText(folder / "new"), "content");
  EXPECT_EQ(Mode(folder / "new"), 0600U);
  EXPECT_EQ(folder.Names(), Names{"new"});
}

TEST(AtomicFile, TheUmaskLimitsTheModeOfANewFile) {
  const TemporaryFolder folder;
  const mode_t old_mask = ::umask(0027);
  kit::WriteFileAtomically(folder / "new", zuna_test::FromText("content"), 0666);
  ::umask(old_mask);
  EXPECT_EQ(zuna_test::FileText(folder / "new"), "content");
  EXPECT_EQ(Mode(folder / "new"), 0640U);
}

TEST(AtomicFile, ReplacedFileKeepsItsMode) {
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

TEST(AtomicFile, AnOpenOldFileIsNotChanged) {
  const TemporaryFolder folder;
  folder.Put("file", "old");
  const int old = ::open((folder / "file").c_str(), O_RDONLY);
  Write(folder / "file", "new");
  char text[4] = {};
  EXPECT_EQ(::read(old, text, 3), 3);
  ::close(old);
  EXPECT_STREQ(text, "old");
}

TEST(AtomicFile, WritesWithoutAFolderInThePath) {
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  Write("bare", "content");
  std::filesystem::current_path(before);
  EXPECT_EQ(zuna_test::FileText(folder / "bare"), "content");
}

TEST(AtomicFile, WritesTheLongestNames) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  Write(folder / name, "content");
  EXPECT_EQ(folder.Names(), Names{name});
}

TEST(AtomicFile, ReplacesWhatALinkPointsTo) {
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

TEST(AtomicFile, CreatesWhatALinkPointsTo) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("absent", folder.path() / "link");
  Write(folder / "link", "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_EQ(zuna_test::FileText(folder / "absent"), "new");
}

TEST(AtomicFile, LinksInACircle) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("b", folder.path() / "a");
  std::filesystem::create_symlink("a", folder.path() / "b");
  EXPECT_EQ(Refusal(folder / "a", "x"), folder / "a" + ": cannot be written: " +
                                            std::generic_category().message(ELOOP) + "; check the path");
}

TEST(AtomicFile, EmptyPath) {
  EXPECT_EQ(Refusal("", "x"), "the path to write to is empty; give the path of a file");
}

TEST(AtomicFile, MissingFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(
      Refusal(folder / "none/file", "x"),
      folder / "none/file" +
          ": cannot be written (creating a file in its folder): No such file or directory; check the path");
}

TEST(AtomicFile, FolderAsTarget) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path() / "sub");
  EXPECT_EQ(Refusal(folder / "sub", "x"),
            folder / "sub" + ": cannot be written: Is a directory; give the path of a file");
  EXPECT_EQ(folder.Names(), Names{"sub"});
}

TEST(AtomicFile, FullDevice) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
  EXPECT_EQ(Refusal("/dev/full", "content"),
            "/dev/full: cannot be written (after 0 of 7 bytes): No space left on device; free some space, or "
            "choose "
            "another folder");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(AtomicFile, PipesAreWrittenTo) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] { received = zuna_test::FileText(folder / "pipe"); });
  Write(folder / "pipe", std::string(200000, 'p'));
  reader.join();
  EXPECT_EQ(received, std::string(200000, 'p'));
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe"));
}

/// While it lives, no file of this process grows beyond `size` bytes: a write stops in the middle.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &old_limit_);
    const rlimit limit{size, old_limit_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &old_limit_);
    std::signal(SIGXFSZ, old_handler_);
  }

 private:
  void (*old_handler_)(int);
  rlimit old_limit_{};
};

TEST(AtomicFile, AWriteThatFailsMidwayLeavesTheOldFileAndNothingElse) {
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

TEST(AtomicFile, AFailedWriteOfANewFileLeavesNothing) {
  const TemporaryFolder folder;
  {
    const FileSizeLimit limit(10000);
    Refusal(folder / "file", std::string(100000, 'n'));
  }
  EXPECT_EQ(folder.Names(), Names{});
}

/// While it lives, this process has no more rights than any user has.
class NotRoot {
 public:
  NotRoot() : changed_(::geteuid() == 0 && ::seteuid(65534) == 0) {}
  NotRoot(const NotRoot&) = delete;
  NotRoot& operator=(const NotRoot&) = delete;
  ~NotRoot() {
    if (changed_ && ::seteuid(0) != 0) std::abort();
  }

 private:
  bool changed_;
};

TEST(AtomicFile, AProtectedFileIsNotReplaced) {
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
                ": cannot be written: Permission denied; check the permissions, or choose another folder");
  EXPECT_EQ(zuna_test::FileText(folder / "file"), "old");
  EXPECT_EQ(folder.Names(), Names{"file"});
}

}  // namespace
