// The cipher stream through the shared library.

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <iterator>
#include <thread>
#include <type_traits>

#include "kit/error.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/errors.h"

namespace {

using zuna_sec::TwoFishCipherStream;
using zuna_test::FromText;
using zuna_test::TemporaryFolder;

TEST(CipherStream, FileRoundTrip) {
  const TemporaryFolder folder;
  const CipherKey secrets{FromText("key"), FromText("iv")};
  TwoFishCipherStream out(std::string(), secrets.key, secrets.iv);
  out.GetStream() << "plaintext";
  out.WriteToFile(folder / "file");

  TwoFishCipherStream in(folder / "file", secrets.key, secrets.iv);
  EXPECT_EQ(&in.GetStream(), &in.GetStream());
  EXPECT_EQ(in.GetStream().exceptions(), std::ios_base::goodbit);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in.GetStream()), {}), "plaintext");
  EXPECT_EQ(zuna_test::FromText(zuna_test::FileText(folder / "file")), out.GetEncryptedBytes());
}

TEST(CipherStream, AnOpenedPlaintextCanBeChangedAndExtended) {
  const TemporaryFolder folder;
  TwoFishCipherStream out(std::string(), {}, {});
  out.GetStream() << "plaintext";
  out.WriteToFile(folder / "file");

  TwoFishCipherStream stream(folder / "file", {}, {});
  stream.GetStream() << "PLAIN";
  stream.GetStream().seekp(0, std::ios_base::end);
  stream.GetStream() << std::string(10000, '!');
  EXPECT_EQ(zuna_test::Decrypted(stream.GetEncryptedBytes(), {{}, {}}),
            "PLAINtext" + std::string(10000, '!'));
}

TEST(CipherStream, MessagesNameThePath) {
  const TemporaryFolder folder;
  folder.Put("text", "no envelope");
  try {
    const TwoFishCipherStream stream(folder / "text", {}, {});
    FAIL();
  } catch (const zuna_sec::NotEncryptedError& error) {
    EXPECT_EQ(error.what(),
              folder / "text" +
                  ": is not an encrypted file of this kind (offset 0); give an encrypted show or "
                  "log file");
  }
}

TEST(CipherStream, ErrorsCarryTheirParts) {
  try {
    const TwoFishCipherStream stream(FromText("no envelope"), {}, {});
    FAIL();
  } catch (const zuna_sec::CipherError& error) {
    const zuna_sec::CipherError copy = error;
    EXPECT_EQ(copy.name(), "encrypted data");
    EXPECT_EQ(copy.problem(), "is not an encrypted file of this kind (offset 0)");
    EXPECT_EQ(copy.remedy(), "give an encrypted show or log file");
  }
  static_assert(std::is_nothrow_copy_constructible_v<zuna_sec::CipherError>);
}

TEST(CipherStream, AFileOfMoreThanOneGibibyte) {
  const TemporaryFolder folder;
  std::filesystem::resize_file(folder.Put("sparse", ""), 1073741824 + 72 + 1);
  try {
    const TwoFishCipherStream stream(folder / "sparse", {}, {});
    FAIL();
  } catch (const zuna_sec::TooLargeError& error) {
    EXPECT_EQ(
        error.what(),
        folder / "sparse" +
            ": holds more than 1073741896 bytes, the most that an encrypted file can; give another file");
  }
}

TEST(CipherStream, MissingFile) {
  EXPECT_THROW(TwoFishCipherStream("/nonexistent/file", {}, {}), kit::IoError);
  EXPECT_THROW(TwoFishCipherStream("/nonexistent/file", {}, {}), kit::RuntimeError);
}

TEST(CipherStream, EmptyOutputPath) {
  TwoFishCipherStream stream(std::string(), {}, {});
  EXPECT_THROW(stream.WriteToFile(""), kit::IoError);
}

TEST(CipherStream, APlaintextThatLostAPartIsNotSealed) {
  const TemporaryFolder folder;
  TwoFishCipherStream stream(std::string(), {}, {});
  stream.GetStream() << "half of it";
  stream.GetStream().setstate(std::ios_base::badbit);
  try {
    stream.WriteToFile(folder / "file");
    FAIL();
  } catch (const kit::IoError& error) {
    EXPECT_EQ(error.what(),
              folder / "file" +
                  ": cannot be encrypted (Twofish), because a write to its stream failed; free some "
                  "memory and try again");
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{});
}

TEST(CipherStream, EndOfReadingDoesNotStopSealing) {
  TwoFishCipherStream stream(std::string(), {}, {});
  stream.GetStream() << "all of it";
  std::string word;
  while (stream.GetStream() >> word) continue;
  EXPECT_TRUE(stream.GetStream().fail());
  EXPECT_EQ(zuna_test::Decrypted(stream.GetEncryptedBytes(), {{}, {}}), "all of it");
}

TEST(CipherStream, EightThreadsAtOnce) {
  std::vector<std::thread> threads;
  for (unsigned id = 0; id < 8; ++id) {
    threads.emplace_back([id] {
      for (unsigned round = 0; round < 50; ++round) {
        const zuna_test::ByteVector key(id, 1);
        const std::string text(id * 100 + round, 't');
        EXPECT_EQ(zuna_test::Decrypted(zuna_test::Encrypted(text, {key, {}}), {key, {}}), text);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
