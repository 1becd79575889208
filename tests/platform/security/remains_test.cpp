// Nothing of a key stays in memory after sealing and opening: neither in freed blocks nor on the stack.

#include <gcrypt.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "kit/wipe.h"
#include "platform/security/envelope.h"
#include "tests/platform/security/sealed.h"
#include "tests/support/remains.h"
#include "zuna_sec/damaged_envelope.h"
#include "zuna_sec/errors.h"

namespace {

using remains::Secret;
using zuna_test::ByteVector;
using zuna_test::FromHex;

/// What is derived from zuna_test::kKey, by another implementation of HKDF; every bit is inverted.
const std::pair<const char*, Secret> kSecrets[] = {
    {"pseudo-random key",
     Secret(FromHex("BD42E3550D22C759802AAD93075574EB818953E0C4F0A3ADE68A679090C8EE11"))},
    {"MAC key of suite 1",
     Secret(FromHex("2B7AA9CFAAB45D1A37F18383029A50DC219646494F2B1C202740FB25DDE838AD"))},
    {"CTR key of suite 1",
     Secret(FromHex("E9468057698F0F7E55FD2ACC2E004D613390ADFA685BFA239F162B905B7514DA"))},
    {"MAC key of suite 2",
     Secret(FromHex("30D408A7F37B9B780684EE17369E3FD46113021E00B2E5512D9D2BA3B37F306C"))},
    {"CTR key of suite 2",
     Secret(FromHex("40714F1A60015FA9966B447BE0B3F0F35C650E289B714C5CF24F08149D432EBC"))},
};
const Secret kCallersKey(FromHex("FEFDFCFBFAF9F8F7F6F5F4F3F2F1F0EF"));

extern "C" {
void* Allocate(std::size_t size) { return std::malloc(size); }
void* Reallocate(void* memory, std::size_t size) { return std::realloc(memory, size); }
int IsSecure(const void* /*memory*/) { return 0; }
}

class Remains : public testing::TestWithParam<std::tuple<zuna_security::Suite, std::size_t>> {
 protected:
  static void SetUpTestSuite() {
    gcry_set_allocation_handler(Allocate, Allocate, IsSecure, Reallocate, remains::LookAndFree);
    zuna_test::Encrypted("");
  }

  static std::size_t Size() { return std::get<1>(GetParam()); }

  static ByteVector Sealed() { return zuna_test::Sealed(std::get<0>(GetParam()), std::string(Size(), 'x')); }

  static void Seal(std::size_t size) {
    const ByteVector plaintext(size, 'x');
    ByteVector envelope(zuna_security::kEnvelopeHeaderSize + size);
    zuna_security::Seal(plaintext, {zuna_test::kKey.key, zuna_test::kKey.iv}, envelope, "e");
  }

  static void Open(const ByteVector& sealed) {
    const zuna_security::Envelope envelope = zuna_security::ParseEnvelope(sealed, "e");
    ByteVector plaintext(envelope.ciphertext.size());
    try {
      zuna_security::Open(envelope, {zuna_test::kKey.key, zuna_test::kKey.iv}, plaintext, "e");
    } catch (const zuna_sec::CipherError&) {
      return;  // what is left behind by a failure is looked for too
    }
  }

  static void ExpectNothingRemains(const std::function<void()>& work) {
    const std::vector<std::uint8_t> stack = remains::StackAfter(work);
    EXPECT_FALSE(kCallersKey.IsIn(stack)) << "the caller's key is on the stack";
    for (const auto& [name, secret] : kSecrets) {
      EXPECT_FALSE(secret.IsIn(stack)) << "the " << name << " is on the stack";
      remains::WatchFreedMemory(&secret);
      work();
      EXPECT_EQ(remains::FoundInFreedMemory(), 0) << "the " << name << " is in freed memory";
      remains::WatchFreedMemory(nullptr);
    }
  }
};

TEST_P(Remains, NoneAfterSealing) {
  const std::size_t size = Size();
  ExpectNothingRemains([size] { Seal(size); });
}

TEST_P(Remains, NoneAfterOpening) {
  const ByteVector sealed = Sealed();
  ExpectNothingRemains([&] { Open(sealed); });
}

TEST_P(Remains, NoneAfterAFailure) {
  ByteVector damaged = Sealed();
  damaged[60] ^= 1;  // tag
  ExpectNothingRemains([&] { Open(damaged); });
  ByteVector other_key = Sealed();
  other_key[30] ^= 1;  // key check
  ExpectNothingRemains([&] { Open(other_key); });
}

TEST_P(Remains, NoneAfterOpeningADamagedOne) {
  ByteVector damaged = Sealed();
  ExpectNothingRemains([&] { zuna_sec::OpenDamaged(damaged, zuna_test::kKey); });
  damaged[60] ^= 1;  // tag
  ExpectNothingRemains([&] { zuna_sec::OpenDamaged(damaged, zuna_test::kKey); });
}

/// Nothing of the plaintext is in freed memory, whichever allocation of `open` fails.
void ExpectNoPlaintextRemains(const std::function<void()>& open) {
  const Secret plaintext(ByteVector(8, static_cast<std::uint8_t>(~'x')));
  for (long call = 1, failed = 1; failed != 0; ++call) {
    ASSERT_LT(call, 100);
    failed = 0;
    remains::WatchFreedMemory(&plaintext);
    remains::FailAllocation(call);
    try {
      open();
    } catch (const std::bad_alloc&) {
      failed = 1;
    }
    remains::FailAllocation(0);
    EXPECT_EQ(remains::FoundInFreedMemory(), 0) << "allocation " << call;
    remains::WatchFreedMemory(nullptr);
  }
}

TEST_P(Remains, NoPlaintextWhereMemoryRunsOut) {
  const ByteVector sealed = Sealed();
  const CipherKey& key = zuna_test::kKey;
  ExpectNoPlaintextRemains([&] { const zuna_sec::TwoFishCipherStream stream(sealed, key.key, key.iv); });
}

TEST_P(Remains, NoPlaintextOfADamagedOneWhereMemoryRunsOut) {
  ByteVector damaged = Sealed();
  damaged[16] ^= 1;  // length, which is noted once the plaintext is there
  ExpectNoPlaintextRemains([&] {
    zuna_sec::DamagedEnvelope opened = zuna_sec::OpenDamaged(damaged, zuna_test::kKey);
    kit::Wipe(opened.plaintext);
  });
}

INSTANTIATE_TEST_SUITE_P(SuitesAndSizes, Remains,
                         testing::Combine(testing::ValuesIn(zuna_security::kSuites),
                                          testing::Values(0, 1, 64, 5000)),
                         [](const auto& test) {
                           return "Suite" + std::to_string(static_cast<int>(std::get<0>(test.param))) +
                                  "Size" + std::to_string(std::get<1>(test.param));
                         });

/// The compiler does not see that the copy is not needed.
void* (*const volatile g_copy)(void*, const void*, std::size_t) = std::memcpy;

/// The search itself: it finds what is left behind on purpose.
TEST(RemainsSearch, FindsWhatIsLeft) {
  const ByteVector key = zuna_test::kKey.key;
  const auto leave = [&key] {
    std::uint8_t left[16];
    g_copy(left, key.data(), key.size());
  };
  EXPECT_TRUE(kCallersKey.IsIn(remains::StackAfter(leave)));
  remains::WatchFreedMemory(&kCallersKey);
  const ByteVector* volatile copy = new ByteVector(key);
  delete copy;
  EXPECT_EQ(remains::FoundInFreedMemory(), 1);
  remains::LookAndFree(g_copy(std::malloc(16), key.data(), 16));
  EXPECT_EQ(remains::FoundInFreedMemory(), 2);
  remains::WatchFreedMemory(nullptr);
}

}  // namespace
