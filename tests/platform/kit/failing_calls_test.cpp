// What becomes of outputs when a system call fails, or does not exist, at a certain moment.

#include "tests/platform/kit/failing_calls.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <utility>

#include "kit/error.h"
#include "kit/file.h"
#include "kit/uuid.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace {

using failing_calls::Failure;
using failing_calls::Failures;
using zuna_test::TemporaryFolder;
using Names = std::vector<std::string>;

/// Writes "new NAME" to the files `names` of `folder` together while calls fail; gives the message of what
/// failed.
std::string Write(const TemporaryFolder& folder, const Names& names, std::vector<Failure> failing,
                  kit::Existing existing = kit::Existing::kReplace) {
  const Failures failures(std::move(failing));
  try {
    kit::OutputFiles files(existing);
    for (const std::string& name : names) files.Add(folder / name);
    for (std::size_t i = 0; i < names.size(); ++i) files.Write(i, zuna_test::FromText("new " + names[i]));
    files.Commit();
    return "";
  } catch (const kit::RuntimeError& error) {
    return error.what();
  }
}

std::string Reason(int error) { return std::generic_category().message(error); }

/// Requires that these files are in the folder, and nothing else.
void ExpectFiles(const TemporaryFolder& folder,
                 const std::vector<std::pair<std::string, std::string>>& files) {
  Names names;
  for (const auto& [name, content] : files) {
    names.push_back(name);
    EXPECT_EQ(zuna_test::FileText(folder / name), content);
  }
  EXPECT_EQ(folder.Names(), names);
}

TEST(FailingCalls, InterruptedCallsAreRepeated) {
  for (const std::string call : {"openat", "write", "fsync", "close"}) {
    for (int number = 1; number <= 8; ++number) {
      const TemporaryFolder folder;
      folder.Put("a", "old");
      EXPECT_EQ(Write(folder, {"a"}, {{call, EINTR, number}}), "") << call << number;
      ExpectFiles(folder, {{"a", "new a"}});
    }
  }
}

TEST(FailingCalls, AFailureOfCloseIsReported) {
  int reported = 0;
  for (int number = 1; number <= 8; ++number) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    const std::string message = Write(folder, {"a"}, {{"close", EIO, number}});
    ExpectFiles(folder, {{"a", message.empty() ? "new a" : "old"}});
    if (message.empty()) continue;  // of a file that nothing was written to
    ++reported;
    EXPECT_EQ(message, folder / "a" + ": cannot be written (flushing it to the disk): " + Reason(EIO) +
                           "; check the disk, or choose another folder");
  }
  EXPECT_EQ(reported, 1);
}

TEST(FailingCalls, NewFilesNeedNoRenameWithoutReplacing) {
  const TemporaryFolder folder;
  EXPECT_EQ(Write(folder, {"a", "b"}, {{"renameat2", EINVAL}}, kit::Existing::kRefuse), "");
  ExpectFiles(folder, {{"a", "new a"}, {"b", "new b"}});
}

TEST(FailingCalls, WithoutThatRenameAFileThatAppearsIsNotReplacedEither) {
  const TemporaryFolder folder;
  const auto appear = [&] { folder.Put("b", "of another program"); };
  EXPECT_EQ(Write(folder, {"a", "b"}, {{"renameat2", EINVAL, 1}, {"renameat2", EINVAL, 2, appear}},
                  kit::Existing::kRefuse),
            folder / "b" + ": has appeared meanwhile and is not replaced; give another path");
  ExpectFiles(folder, {{"b", "of another program"}});
}

TEST(FailingCalls, OldFilesAreKeptWithoutHardLinks) {
  const TemporaryFolder folder;
  const std::string old(200000, 'o');
  folder.Put("a", old);
  folder.Put("b", "old b");
  ASSERT_EQ(::chmod((folder / "a").c_str(), 0640), 0);
  EXPECT_EQ(Write(folder, {"a", "b"}, {{"linkat", EPERM}, {"renameat", EIO, 2}}),
            folder / "b" + ": cannot be written (replacing it): " + Reason(EIO) +
                "; check the disk, or choose another folder");
  ExpectFiles(folder, {{"a", old}, {"b", "old b"}});
  EXPECT_EQ(std::filesystem::status(folder / "a").permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(Write(folder, {"a", "b"}, {{"linkat", EPERM}}), "");
  ExpectFiles(folder, {{"a", "new a"}, {"b", "new b"}});
}

TEST(FailingCalls, AnOldFileThatCannotBeKeptIsNotReplaced) {
  const TemporaryFolder folder;
  folder.Put("a", "old a");
  folder.Put("b", "old b");
  // The fourth write is that of the copy of "b", when "a" is in its place. The first read is that of the
  // copy, or that of a random number in standard libraries that read one.
  for (const Failure& failure : {Failure{"read", EIO, 1}, Failure{"write", EIO, 4}}) {
    EXPECT_NE(Write(folder, {"a", "b"}, {{"linkat", EPERM}, failure}), "");
    ExpectFiles(folder, {{"a", "old a"}, {"b", "old b"}});
  }
}

TEST(FailingCalls, WhatAnotherProgramHasPutInAPlaceStaysThere) {
  for (const bool exists : {false, true}) {
    const TemporaryFolder folder;
    if (exists) folder.Put("a", "old a");
    const auto replace = [&] {
      folder.Put("other", "of another program");
      std::filesystem::rename(folder / "other", folder / "a");
    };
    EXPECT_NE(Write(folder, {"a", "b"}, {{"renameat", EIO, 2, replace}}), "");
    ExpectFiles(folder, {{"a", "of another program"}});
  }
}

TEST(FailingCalls, APlaceThatCannotBeLookedAtGetsItsOldFileBack) {
  for (int number = 1; number <= 20; ++number) {
    const TemporaryFolder folder;
    folder.Put("a", "old a");
    folder.Put("b", "old b");
    const bool done = Write(folder, {"a", "b"}, {{"fstatat", EIO, number, {}, true}}).empty();
    EXPECT_EQ(done, number > 9) << number;
    const std::string age = done ? "new " : "old ";
    ExpectFiles(folder, {{"a", age + "a"}, {"b", age + "b"}});
  }
}

TEST(FailingCalls, WhatAnotherProgramHasRemovedIsNotMissed) {
  const TemporaryFolder folder;
  folder.Put("a", "old a");
  const auto remove = [&] { std::filesystem::remove(folder / "a"); };
  EXPECT_EQ(Write(folder, {"a", "b"}, {{"renameat", EIO, 2, remove}}),
            folder / "b" + ": cannot be written (replacing it): " + Reason(EIO) +
                "; check the disk, or choose another folder");
  ExpectFiles(folder, {});
}

TEST(FailingCalls, AFileThatCannotBeTakenBackDoesNotKeepOthersFromIt) {
  const TemporaryFolder folder;
  for (const std::string name : {"a", "b", "c"}) folder.Put(name, "old " + name);
  // The third file fails to get its place, then the second one's old file its own.
  const std::string message = Write(folder, {"a", "b", "c"}, {{"renameat", EIO, 3}, {"renameat", EIO, 4}});
  const std::string left = folder.Names().front();
  EXPECT_EQ(message,
            folder / "b" +
                ": is replaced, but another file is not (putting back the old one, now in its folder "
                "as \"" +
                left + "/old-1\"): " + Reason(EIO) + "; check the disk, or choose another folder");
  EXPECT_EQ(zuna_test::FileText(folder / "a"), "old a");
  EXPECT_EQ(zuna_test::FileText(folder / "b"), "new b");
  EXPECT_EQ(zuna_test::FileText(folder / "c"), "old c");
  EXPECT_EQ(zuna_test::FileText(folder / left + "/old-1"), "old b");
}

TEST(FailingCalls, AFileThatCannotBeRemovedDoesNotKeepOthersFromIt) {
  const TemporaryFolder folder;
  for (const std::string name : {"a", "b", "c"}) folder.Put(name, "old " + name);
  const std::string message = Write(folder, {"a", "b", "c"}, {{"unlinkat", EIO, 1}});
  const std::string left = folder.Names().front();
  EXPECT_EQ(message, folder / "a" + ": is written, but .zuna-*.tmp in its folder cannot be removed: " +
                         Reason(EIO) + "; check the disk, or choose another folder");
  EXPECT_EQ(zuna_test::FileText(folder / left + "/old-0"), "old a");
  EXPECT_FALSE(std::filesystem::exists(folder / left + "/old-1"));
  EXPECT_FALSE(std::filesystem::exists(folder / left + "/old-2"));
  EXPECT_EQ(zuna_test::FileText(folder / "c"), "new c");
}

TEST(FailingCalls, NewAndOldAreBothRemovedWhereOneOfThemCannotBe) {
  const TemporaryFolder folder;
  for (const std::string name : {"a", "b"}) folder.Put(name, "old " + name);
  // The second file fails to get its place: the staging folder has its new and its old bytes.
  EXPECT_NE(Write(folder, {"a", "b"}, {{"renameat", EIO, 2}, {"unlinkat", EIO, 1}}), "");
  const std::string left = folder.Names().front();
  EXPECT_TRUE(std::filesystem::exists(folder / left + "/new-1"));
  EXPECT_FALSE(std::filesystem::exists(folder / left + "/old-1"));
}

TEST(FailingCalls, AFolderThatCannotBeFlushedIsReported) {
  const TemporaryFolder folder;
  EXPECT_EQ(Write(folder, {"a"}, {{"fsync", EIO, 2}}),
            folder / "a" + ": is written, but its folder cannot be flushed: " + Reason(EIO) +
                "; check the disk, or choose another folder");
  ExpectFiles(folder, {{"a", "new a"}});
}

TEST(FailingCalls, ABackupIsRefusedWhereAllItsNamesAreTaken) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("a", "old");
  const Failures failures({{"linkat", EEXIST}});
  try {
    kit::BackUp(path, 100);
    FAIL() << "nothing was thrown";
  } catch (const kit::FileIoError& error) {
    EXPECT_EQ(error.what(),
              path +
                  ": cannot be kept beside the new file: the number 99999 is taken; move its backups "
                  "to another folder");
  }
}

TEST(FailingCalls, ABackupSaysWhyItCannotBeMade) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("a", "old");
  const Failures failures({{"linkat", EPERM}, {"write", ENOSPC}});
  try {
    kit::BackUp(path, 100);
    FAIL() << "nothing was thrown";
  } catch (const kit::FileIoError& error) {
    EXPECT_EQ(error.error(), ENOSPC);
    EXPECT_EQ(error.path(), path + ".~1~");
  }
}

TEST(FailingCalls, AnIdentifierWithoutRandomNumbersIsRefused) {
  const Failures failures({{"getrandom", EIO}});
  try {
    const kit::UUID identifier;
    FAIL() << "nothing was thrown";
  } catch (const kit::IoError& error) {
    EXPECT_EQ(error.what(), "A new identifier needs random numbers, and the system gives none: " +
                                Reason(EIO) + "; check the system");
  }
}

TEST(FailingCalls, AFileWithoutARandomNameForItsPrivateFolderIsRefused) {
  const zuna_test::TemporaryFolder folder;
  const Failures failures({{"getentropy", EIO}});
  try {
    kit::OutputFiles output(kit::Existing::kRefuse);
    output.Add(folder / "a");
    output.Write(0, {}, kit::kOwnerOnly);
    FAIL() << "nothing was thrown";
  } catch (const kit::FileIoError& error) {
    EXPECT_EQ(error.path(), folder / "a");
    EXPECT_EQ(error.problem(), "cannot be written: the system gives no random numbers");
  }
  EXPECT_FALSE(std::filesystem::exists(folder / "a"));
}

unsigned Mode(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

/// Puts a link to `victim` in the place of the file "new-0" that is being made in `folder`.
void PlantLink(const TemporaryFolder& folder, const std::string& victim) {
  const std::string file = folder / folder.Names().front() + "/new-0";
  ASSERT_TRUE(std::filesystem::remove(file));
  std::filesystem::create_symlink(victim, file);
}

TEST(FailingCalls, ALinkInTheStagingFolderGetsNoPermissions) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  elsewhere.Put("victim", "secret");
  ASSERT_EQ(::chmod((elsewhere / "victim").c_str(), 0600), 0);
  folder.Put("a", "old");
  ASSERT_EQ(::chmod((folder / "a").c_str(), 0666), 0);
  Write(folder, {"a"}, {{"write", 0, 1, [&] { PlantLink(folder, elsewhere / "victim"); }}});
  EXPECT_EQ(Mode(elsewhere / "victim"), 0600U);
}

TEST(FailingCalls, ALinkInTheStagingFolderGetsNoPermissionsThatHaveChanged) {
  for (const bool is_link : {true, false}) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    elsewhere.Put("victim", "secret");
    ASSERT_EQ(::chmod((elsewhere / "victim").c_str(), 0600), 0);
    folder.Put("a", "old");
    kit::OutputFiles files(kit::Existing::kReplace);
    files.Add(folder / "a");
    files.Write(0, zuna_test::FromText("new a"));
    ASSERT_EQ(::chmod((folder / "a").c_str(), 0606), 0);
    PlantLink(folder, elsewhere / "victim");
    if (!is_link) {
      const std::string file = folder / folder.Names().front() + "/new-0";
      std::filesystem::remove(file);
      std::filesystem::create_hard_link(elsewhere / "victim", file);
    }
    EXPECT_THROW(files.Commit(), kit::IoError);
    EXPECT_EQ(Mode(elsewhere / "victim"), 0600U);
    EXPECT_EQ(zuna_test::FileText(folder / "a"), "old");
  }
}

}  // namespace
