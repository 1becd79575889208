#include "platform/security/read_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <thread>

#include "kit/error.h"
#include "platform/security/envelope.h"
#include "tests/security/support.h"
#include "zuna_sec/errors.h"

namespace {

using support::TemporaryFolder;

std::string Content(const zuna_security::FileBytes& file) {
  return {reinterpret_cast<const char*>(file.block.data()), file.size};
}

template <typename Error>
std::string Refusal(const std::string& path, std::size_t max_size) {
  try {
    zuna_security::ReadWholeFile(path, max_size);
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
    support::WritePlainFile(folder / "file", content);
    EXPECT_EQ(Content(zuna_security::ReadWholeFile(folder / "file", 300000)), content);
  }
}

TEST(ReadWholeFile, ReadsPipes) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  const std::string content(300000, 'p');
  std::thread writer([&] { support::WritePlainFile(folder / "pipe", content); });
  EXPECT_EQ(Content(zuna_security::ReadWholeFile(folder / "pipe", 300000)), content);
  writer.join();
}

TEST(ReadWholeFile, RefusesPipesThatHoldTooMuch) {
  EXPECT_EQ(
      Refusal<zuna_sec::TooLargeError>("/dev/zero", 100000),
      "/dev/zero: holds more than 100000 bytes, the most that an encrypted file can; give another file");
}

TEST(ReadWholeFile, RefusesFilesOfMoreThanOneGibibyteUnread) {
  const TemporaryFolder folder;
  support::WritePlainFile(folder / "sparse", "");
  ASSERT_EQ(::truncate((folder / "sparse").c_str(), 1073741824 + 72 + 1), 0);
  EXPECT_EQ(Refusal<zuna_sec::TooLargeError>(folder / "sparse", zuna_security::kMaxEnvelopeSize),
            folder / "sparse" +
                ": holds more than 1073741896 bytes, the most that an encrypted file can; give another file");
}

TEST(ReadWholeFile, MissingFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(Refusal<kit::IoError>(folder / "none", 100),
            folder / "none" + ": cannot be opened: No such file or directory; check the path");
}

TEST(ReadWholeFile, Folder) {
  const TemporaryFolder folder;
  EXPECT_EQ(Refusal<kit::IoError>(folder.path(), 100),
            folder.path().string() + ": cannot be read (offset 0): Is a directory; give the path of a file");
}

}  // namespace
