// Reading whole files with a limit.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <thread>

#include "kit/error.h"
#include "kit/file.h"
#include "kit/path.h"
#include "tests/support/bytes.h"
#include "tests/support/sanitized.h"
#include "tests/support/temporary_folder.h"

namespace {

using zuna_test::TemporaryFolder;

std::string Content(const kit::FileBytes& file) {
  return {reinterpret_cast<const char*>(file.block.data()), file.size};
}

template <typename Error>
std::string Refusal(const std::string& path, std::size_t limit) {
  try {
    kit::ReadWholeFile(path, limit);
  } catch (const Error& error) {
    return error.what();
  }
  ADD_FAILURE() << "accepted";
  return "";
}

TEST(ReadWholeFile, ReadsFilesOfAnySize) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 4096U, 65535U, 65536U, 300000U}) {
    const std::string content(size, 'x');
    folder.Put("file", content);
    EXPECT_EQ(Content(kit::ReadWholeFile(folder / "file", 300000)), content);
  }
}

TEST(ReadRegularFile, ReadsRegularFilesAndLinksToThem) {
  const TemporaryFolder folder;
  folder.Put("file", "content");
  ASSERT_EQ(::symlink("file", (folder / "link").c_str()), 0);
  for (const char* name : {"file", "link"}) {
    const auto file = kit::ReadRegularFile(folder / name, 7);
    ASSERT_TRUE(file) << name;
    EXPECT_EQ(Content(*file), "content");
  }
  EXPECT_THROW(kit::ReadRegularFile(folder / "file", 6), kit::FileTooLargeError);
  EXPECT_THROW(kit::ReadRegularFile(folder / "none", 6), kit::IoError);
}

TEST(ReadRegularFile, PassesOverEverythingElseWithoutWaiting) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  ASSERT_EQ(::symlink("pipe", (folder / "link").c_str()), 0);
  EXPECT_FALSE(kit::ReadRegularFile(folder / "pipe", 7));
  EXPECT_FALSE(kit::ReadRegularFile(folder / "link", 7));
  EXPECT_FALSE(kit::ReadRegularFile(folder.path(), 7));
  EXPECT_FALSE(kit::ReadRegularFile("/dev/zero", 7));
}

TEST(ReadWholeFile, ReadsPipes) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  const std::string content(300000, 'p');
  std::thread writer([&] { folder.Put("pipe", content); });
  EXPECT_EQ(Content(kit::ReadWholeFile(folder / "pipe", 300000)), content);
  writer.join();
}

TEST(ReadWholeFile, RefusesPipesThatHoldTooMuch) {
  EXPECT_EQ(Refusal<kit::FileTooLargeError>("/dev/zero", 100000),
            "/dev/zero: holds more than 100000 bytes; give another file");
}

TEST(ReadWholeFile, RefusesLargeFilesUnread) {
  const TemporaryFolder folder;
  folder.Put("sparse", "");
  ASSERT_EQ(::truncate((folder / "sparse").c_str(), 1073741824), 0);
  EXPECT_EQ(Refusal<kit::FileTooLargeError>(folder / "sparse", 1073741823),
            folder / "sparse" + ": holds more than 1073741823 bytes; give another file");
}

TEST(ReadWholeFile, TheErrorCarriesTheLimit) {
  try {
    kit::ReadWholeFile("/dev/zero", 100000);
    FAIL();
  } catch (const kit::FileTooLargeError& error) {
    EXPECT_EQ(error.limit(), 100000U);
  }
}

TEST(ReadWholeFile, ReadsFromADescriptorAndLeavesItOpen) {
  const TemporaryFolder folder;
  folder.Put("file", "content");
  const int file = ::open((folder / "file").c_str(), O_RDONLY);
  EXPECT_EQ(::lseek(file, 3, SEEK_SET), 3);
  EXPECT_EQ(Content(kit::ReadWholeFile(file, "standard input", 100)), "tent");
  EXPECT_EQ(::close(file), 0);
}

TEST(ReadWholeFile, MessagesNameWhatTheCallerCallsADescriptor) {
  try {
    kit::ReadWholeFile(-1, "standard input", 100);
    FAIL();
  } catch (const kit::IoError& error) {
    EXPECT_STREQ(
        error.what(),
        "standard input: cannot be read: Bad file descriptor; check the disk, or choose another folder");
  }
}

TEST(ReadWholeFile, MissingFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(Refusal<kit::IoError>(folder / "none", 100),
            folder / "none" + ": cannot be opened: No such file or directory; check the path");
}

TEST(ReadWholeFile, ItsErrorHasItsParts) {
  try {
    kit::ReadWholeFile("/no/such/file", 100);
    FAIL();
  } catch (const kit::FileIoError& error) {
    EXPECT_EQ(error.path(), "/no/such/file");
    EXPECT_EQ(error.problem(), "cannot be opened: No such file or directory");
    EXPECT_EQ(error.remedy(), "check the path");
    EXPECT_EQ(error.error(), ENOENT);
  }
}

TEST(ReadWholeFile, TooManyOpenFiles) {
  if (zuna_test::kSanitized) GTEST_SKIP() << "a sanitizer opens files itself";
  const TemporaryFolder folder;
  const std::string path = folder.Put("file", "content");
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  const rlimit none{0, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  const std::string message = Refusal<kit::IoError>(path, 100);
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_EQ(message,
            path +
                ": cannot be opened: Too many open files; close other files or programs, or raise the "
                "limit of open files");
}

void ExpectRefusedEverywhere(const std::string& path, const std::string& message) {
  EXPECT_EQ(Refusal<kit::IoError>(path, 100), message);
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>([&] { kit::ReadRegularFile(path, 100); }), message);
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>([&] { kit::listdir(path); }), message);
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>([&] { kit::BackUp(path, 100); }), message);
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>([&] { kit::WriteFileAtomically(path, {}); }), message);
}

TEST(ReadWholeFile, APathWithANulByteIsRefused) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("file", "content") + std::string("\0.showdata", 10);
  ExpectRefusedEverywhere(
      path, folder / "file" + "\\0.showdata: no path holds a NUL byte; give the path of a file");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
}

TEST(ReadWholeFile, AnEmptyPathIsRefused) {
  ExpectRefusedEverywhere("", "\"\": an empty path names no file or folder; give a path");
}

TEST(ReadWholeFile, Folder) {
  const TemporaryFolder folder;
  EXPECT_EQ(Refusal<kit::IoError>(folder.path(), 100),
            folder.path().string() + ": cannot be read: Is a directory; give the path of a file");
}

TEST(ReadWholeFile, WaitsForAPipeThatDoesNotBlock) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ASSERT_EQ(::fcntl(ends[0], F_SETFL, O_NONBLOCK), 0);
  std::thread writer([&] {
    for (const char* piece : {"first ", "second"}) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      EXPECT_EQ(::write(ends[1], piece, 6), 6);
    }
    ::close(ends[1]);
  });
  std::string text;
  EXPECT_NO_THROW({
    const kit::FileBytes file = kit::ReadWholeFile(ends[0], "pipe", 100);
    text = Content(file);
  });
  writer.join();
  ::close(ends[0]);
  EXPECT_EQ(text, "first second");
}

}  // namespace
