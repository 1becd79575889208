// Opening and sealing where memory runs out at each allocation in turn, once and for ever.

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <iterator>

#include "tests/platform/security/sealed.h"
#include "tests/support/failing_memory.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_stream.h"

namespace {

using zuna_sec::TwoFishCipherStream;
using zuna_test::ByteVector;

ByteVector Key() { return ByteVector(16, 1); }
ByteVector Iv() { return ByteVector(100, 2); }
std::string Text() { return std::string(20000, 't'); }

/// Runs `work` with the 1st, 2nd, ... allocation failing, until it needs no more of them.
void ExpectCleanFailures(const std::function<void()>& work) {
  work();  // what is allocated once for all
  for (const bool for_ever : {false, true}) {
    long call = 1;
    for (bool failed = true; failed; ++call) {
      ASSERT_LT(call, 10000) << "does not end";
      const long live = failing_memory::Live();
      bool thrown = false;
      failing_memory::FailAt(call, for_ever);
      try {
        work();
      } catch (const std::bad_alloc&) {
        thrown = true;
      }
      failed = failing_memory::Stop();
      EXPECT_EQ(thrown, failed) << "allocation " << call;
      EXPECT_EQ(failing_memory::Live(), live) << "allocation " << call << " leaks";
    }
    EXPECT_GT(call, 3) << "nothing was tested";
  }
}

class FailingMemory : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    failing_memory::Install();
    zuna_test::Encrypted("", {Key(), Iv()});
  }
};

class OpeningInFailingMemory : public FailingMemory,
                               public testing::WithParamInterface<zuna_security::Suite> {};

INSTANTIATE_TEST_SUITE_P(Suites, OpeningInFailingMemory, testing::ValuesIn(zuna_security::kSuites),
                         zuna_test::SuiteName);

TEST_P(OpeningInFailingMemory, Bytes) {
  const ByteVector sealed = zuna_test::Sealed(GetParam(), Text(), {Key(), Iv()});
  const ByteVector key = Key();
  const ByteVector iv = Iv();
  ExpectCleanFailures([&] { const TwoFishCipherStream stream(sealed, key, iv); });
}

TEST_P(OpeningInFailingMemory, AFile) {
  const zuna_test::TemporaryFolder folder;
  const ByteVector sealed = zuna_test::Sealed(GetParam(), Text(), {Key(), Iv()});
  const std::string path = folder.Put("file", std::string(sealed.begin(), sealed.end()));
  const ByteVector key = Key();
  const ByteVector iv = Iv();
  ExpectCleanFailures([&] { const TwoFishCipherStream stream(path, key, iv); });
}

TEST_F(FailingMemory, SealingBytes) {
  TwoFishCipherStream stream(std::string(), Key(), Iv());
  stream.GetStream() << Text();
  ExpectCleanFailures([&] { stream.GetEncryptedBytes(); });
}

TEST_F(FailingMemory, SealingAFileLeavesTheOldOne) {
  const zuna_test::TemporaryFolder folder;
  const std::string path = folder / "file";
  TwoFishCipherStream stream(std::string(), Key(), Iv());
  stream.GetStream() << Text();
  for (long call = 1;; ++call) {
    folder.Put("file", "old");
    const long live = failing_memory::Live();
    failing_memory::FailAt(call, true);
    bool thrown = false;
    try {
      stream.WriteToFile(path);
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
    failing_memory::Stop();
    EXPECT_EQ(failing_memory::Live(), live) << "allocation " << call << " leaks";
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
    if (!thrown) break;
    EXPECT_EQ(zuna_test::FileText(path), "old") << "allocation " << call;
  }
  EXPECT_EQ(zuna_test::Decrypted(zuna_test::FileBytes(path), {Key(), Iv()}), Text());
}

TEST_F(FailingMemory, WritingIntoAStreamMakesItBadAndKeepsWhatWasThere) {
  const std::string text = Text();
  TwoFishCipherStream stream(std::string(), Key(), Iv());
  std::iostream& plaintext = stream.GetStream();
  plaintext << "kept";
  failing_memory::FailAt(1, false);
  plaintext.write(text.data(), static_cast<std::streamsize>(text.size()));
  EXPECT_TRUE(failing_memory::Stop());
  EXPECT_TRUE(plaintext.bad());

  plaintext.clear();
  plaintext << " and more";
  EXPECT_EQ(zuna_test::Decrypted(stream.GetEncryptedBytes(), {Key(), Iv()}), "kept and more");

  plaintext.exceptions(std::ios_base::badbit);
  failing_memory::FailAt(1, false);
  EXPECT_THROW(plaintext.write(text.data(), static_cast<std::streamsize>(text.size())), std::bad_alloc);
  EXPECT_TRUE(failing_memory::Stop());
}

}  // namespace
