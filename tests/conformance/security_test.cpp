// What the converter and the toolkit rely on in the security library: the contracts in interfaces/zuna_sec/.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "kit/error.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/errors.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using zuna_sec::TwoFishCipherStream;
using zuna_test::TemporaryFolder;

const Bytes kKey = {1, 2, 3, 4, 5, 6, 7, 8};
const Bytes kIv = {9, 10};
const std::string kText = "the plaintext of a show";

std::string ReadAll(std::istream& is) { return {std::istreambuf_iterator<char>(is), {}}; }

Bytes Encrypted(const std::string& text, const Bytes& key = kKey, const Bytes& iv = kIv) {
  TwoFishCipherStream stream(std::string(), key, iv);
  stream.GetStream().write(text.data(), static_cast<std::streamsize>(text.size()));
  return stream.GetEncryptedBytes();
}

std::string Decrypted(const Bytes& bytes, const Bytes& key = kKey, const Bytes& iv = kIv) {
  TwoFishCipherStream stream(bytes, key, iv);
  return ReadAll(stream.GetStream());
}

TEST(CipherStream, AnEmptyPathStartsAnEmptyPlaintext) {
  TwoFishCipherStream stream(std::string(), kKey, kIv);
  EXPECT_EQ(&stream.GetStream(), &stream.GetStream());
  EXPECT_EQ(stream.GetStream().exceptions(), std::ios_base::goodbit);
  EXPECT_EQ(stream.GetStream().rdstate(), std::ios_base::goodbit);
  EXPECT_EQ(stream.GetStream().tellp(), 0);
  EXPECT_EQ(ReadAll(stream.GetStream()), "");
}

TEST(CipherStream, ReadAndWritePositionsAreIndependent) {
  TwoFishCipherStream stream(std::string(), kKey, kIv);
  std::iostream& plaintext = stream.GetStream();
  plaintext << "abcd";
  EXPECT_EQ(plaintext.get(), 'a');
  plaintext << "ef";
  EXPECT_EQ(plaintext.tellp(), 6);
  EXPECT_EQ(plaintext.tellg(), 1);
  EXPECT_EQ(ReadAll(plaintext), "bcdef");
}

TEST(CipherStream, ALengthCanBePatched) {
  TwoFishCipherStream stream(std::string(), kKey, kIv);
  std::iostream& plaintext = stream.GetStream();
  plaintext << "..body";
  plaintext.seekp(0);
  plaintext << "04";
  plaintext.seekp(0, std::ios_base::end);
  plaintext << "next";
  EXPECT_EQ(Decrypted(stream.GetEncryptedBytes()), "04bodynext");
}

TEST(CipherStream, ThePlaintextIsWholeInMemory) {
  TwoFishCipherStream stream(Encrypted(kText), kKey, kIv);
  std::iostream& plaintext = stream.GetStream();
  EXPECT_EQ(plaintext.tellg(), 0);
  plaintext.seekg(0, std::ios_base::end);
  EXPECT_EQ(plaintext.tellg(), static_cast<std::streamoff>(kText.size()));
  plaintext.seekg(0);
  EXPECT_EQ(ReadAll(plaintext), kText);
  plaintext.clear();
  plaintext.seekg(4);
  EXPECT_EQ(ReadAll(plaintext), kText.substr(4));
}

TEST(CipherStream, TheExceptionMaskWorks) {
  TwoFishCipherStream stream(Encrypted("ab"), kKey, kIv);
  stream.GetStream().exceptions(std::ios_base::failbit | std::ios_base::badbit);
  char bytes[3];
  EXPECT_THROW(stream.GetStream().read(bytes, 3), std::ios_base::failure);
}

TEST(CipherStream, RoundTripsOfEverySizeOfTextKeyAndIv) {
  for (const std::size_t size : {0U, 1U, 15U, 16U, 17U, 4096U, 100'000U}) {
    const std::string text(size, 't');
    for (const std::size_t key_size : {0U, 1U, 16U, 32U, 1000U}) {
      const Bytes key(key_size, 3);
      EXPECT_EQ(Decrypted(Encrypted(text, key, {}), key, {}), text);
      EXPECT_EQ(Decrypted(Encrypted(text, {}, key), {}, key), text);
    }
  }
}

TEST(CipherStream, TheSameInputsGiveTheSameBytes) { EXPECT_EQ(Encrypted(kText), Encrypted(kText)); }

TEST(CipherStream, TheEncryptedBytesDoNotHoldThePlaintext) {
#ifdef ZUNA_DOES_NOT_ENCRYPT
  GTEST_SKIP() << "the example of a security library does not encrypt";
#endif
  const Bytes bytes = Encrypted(kText);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()).find(kText.substr(0, 8)), std::string::npos);
}

TEST(CipherStream, RoundTripThroughAFile) {
  const TemporaryFolder folder;
  TwoFishCipherStream out(std::string(), kKey, kIv);
  out.GetStream() << kText;
  out.WriteToFile(folder / "file");
  EXPECT_EQ(zuna_test::FileBytes(folder / "file"), out.GetEncryptedBytes());
  TwoFishCipherStream in(folder / "file", kKey, kIv);
  EXPECT_EQ(ReadAll(in.GetStream()), kText);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
}

TEST(CipherStream, ANewFileIsReadableByItsOwnerOnlyAndAReplacedOneKeepsItsMode) {
  const TemporaryFolder folder;
  const auto mode = [&] { return std::filesystem::status(folder / "file").permissions(); };
  TwoFishCipherStream stream(std::string(), kKey, kIv);
  stream.WriteToFile(folder / "file");
  EXPECT_EQ(mode(), std::filesystem::perms{0600});
  std::filesystem::permissions(folder / "file", std::filesystem::perms{0640});
  stream.WriteToFile(folder / "file");
  EXPECT_EQ(mode(), std::filesystem::perms{0640});
}

/// Ends the process where `stream` first writes bytes into a file, so that the file stays as it is then.
[[noreturn]] void EndInWriteToFile(TwoFishCipherStream& stream, const std::string& path) {
  ::umask(0);
  const zuna_test::FileSizeLimit limit(0);
  std::signal(SIGXFSZ, [](int) { ::_exit(0); });
  stream.WriteToFile(path);
  ::_exit(1);
}

TEST(CipherStream, AFileIsReadableByItsOwnerOnlyFromItsBeginning) {
  const TemporaryFolder folder;
  TwoFishCipherStream stream(std::string(), kKey, kIv);
  stream.GetStream() << kText;
  EXPECT_EXIT(EndInWriteToFile(stream, folder / "file"), testing::ExitedWithCode(0), "");
  for (const std::string& name : folder.Names()) {
    const auto mode = std::filesystem::status(folder / name).permissions();
    EXPECT_EQ(mode & std::filesystem::perms{0077}, std::filesystem::perms::none) << name;
  }
}

TEST(CipherStream, APathThatNamesNoFile) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "folder");
  std::filesystem::create_symlink("loop", folder / "loop");
  const std::vector<std::string> names = folder.Names();
  TwoFishCipherStream stream(std::string(), kKey, kIv);
  for (const std::string& path : {folder / "none/file", folder / "folder", folder / "loop",
                                  folder / std::string(300, 'n'), folder / "folder/../none/file"}) {
    EXPECT_THROW(TwoFishCipherStream(path, kKey, kIv), kit::IoError) << path;
    EXPECT_THROW(stream.WriteToFile(path), kit::IoError) << path;
    EXPECT_EQ(folder.Names(), names) << path;
  }
  EXPECT_THROW(TwoFishCipherStream(folder / "none", kKey, kIv), kit::IoError);
}

TEST(CipherStream, ANameOfTheGreatestLength) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  TwoFishCipherStream(std::string(), kKey, kIv).WriteToFile(folder / name);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{name});
}

TEST(CipherStream, FilesWithSimilarNamesStay) {
  const TemporaryFolder folder;
  for (const char* ending : {".new", ".tmp", ".bak", ".part", ".swp", "~", ".1"}) {
    folder.Put(std::string("file") + ending, "of another program");
  }
  const std::vector<std::string> names = folder.Names();
  TwoFishCipherStream(std::string(), kKey, kIv).WriteToFile(folder / "file");
  for (const std::string& name : names) {
    EXPECT_EQ(zuna_test::FileText(folder / name), "of another program") << name;
  }
  EXPECT_EQ(folder.Names().size(), names.size() + 1);
}

TEST(CipherStream, AFileBehindALinkIsReplacedAndTheLinkStays) {
  const TemporaryFolder folder;
  folder.Put("file", "old");
  std::filesystem::create_symlink("file", folder / "link");
  TwoFishCipherStream stream(std::string(), kKey, kIv);
  stream.WriteToFile(folder / "link");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_EQ(zuna_test::FileBytes(folder / "file"), stream.GetEncryptedBytes());
}

TEST(Refusal, AnotherKeyOrIv) {
  const Bytes bytes = Encrypted(kText);
  EXPECT_THROW(Decrypted(bytes, {1}, kIv), zuna_sec::WrongKeyError);
  EXPECT_THROW(Decrypted(bytes, kKey, {}), zuna_sec::WrongKeyError);
}

TEST(Refusal, OtherData) {
  EXPECT_THROW(Decrypted({}), zuna_sec::NotEncryptedError);
  EXPECT_THROW(Decrypted(Bytes(100, 'x')), zuna_sec::NotEncryptedError);
}

TEST(Refusal, EveryTruncationEveryChangedByteAndAnExtraByte) {
  const Bytes good = Encrypted(kText);
  for (std::size_t i = 0; i < good.size(); ++i) {
    const Bytes cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(i));
    EXPECT_THROW(Decrypted(cut), zuna_sec::CipherError) << "cut at " << i;
    Bytes changed = good;
    changed[i] ^= 1;
    EXPECT_THROW(Decrypted(changed), zuna_sec::CipherError) << "changed at " << i;
  }
  Bytes longer = good;
  longer.push_back(0);
  EXPECT_THROW(Decrypted(longer), zuna_sec::CipherError);
}

TEST(Refusal, NamesThePathOrTheData) {
  const TemporaryFolder folder;
  const std::string path = folder.Put("file", "no encrypted file");
  try {
    const TwoFishCipherStream stream(path, kKey, kIv);
    FAIL();
  } catch (const zuna_sec::CipherError& error) {
    EXPECT_EQ(error.name(), path);
    EXPECT_EQ(error.what(), path + ": " + error.problem() + "; " + error.remedy());
  }
  try {
    Decrypted(Bytes(100, 'x'));
    FAIL();
  } catch (const zuna_sec::CipherError& error) {
    EXPECT_EQ(error.name(), "encrypted data");
  }
}

}  // namespace
