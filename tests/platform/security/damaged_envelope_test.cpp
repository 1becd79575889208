// What comes back of damaged envelopes, and what is refused; docs/envelope.md.

#include "zuna_sec/damaged_envelope.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/security/sealed.h"
#include "zuna_sec/errors.h"

namespace {

using zuna_sec::DamagedEnvelope;
using zuna_test::ByteVector;
using zuna_test::kKey;

constexpr std::size_t kHeaderSize = 72;
constexpr std::size_t kTag = 56;

const std::string kPlaintext = "The plaintext of a show, which has more than a few blocks of sixteen bytes.";

/// Envelopes of each suite.
class OpenDamaged : public testing::TestWithParam<zuna_security::Suite> {
 protected:
  static ByteVector Good() { return zuna_test::Sealed(GetParam(), kPlaintext); }

  static ByteVector Flipped(std::size_t offset) {
    ByteVector bytes = Good();
    bytes[offset] ^= 0x21;
    return bytes;
  }
};

std::string TextOf(const DamagedEnvelope& opened) {
  return {opened.plaintext.begin(), opened.plaintext.end()};
}

using Fields = std::vector<std::string_view>;

TEST_P(OpenDamaged, OpensAnUndamagedOne) {
  const DamagedEnvelope opened = zuna_sec::OpenDamaged(Good(), kKey);
  EXPECT_TRUE(opened.authentic);
  EXPECT_EQ(TextOf(opened), kPlaintext);
  EXPECT_EQ(opened.stated_size, kPlaintext.size());
  EXPECT_EQ(opened.trailing, 0U);
  EXPECT_EQ(opened.damaged_fields, Fields());
}

TEST_P(OpenDamaged, GivesWhatWasNotCutOff) {
  const ByteVector good = Good();
  for (std::size_t size = kHeaderSize; size < good.size(); ++size) {
    const DamagedEnvelope opened = zuna_sec::OpenDamaged({good.data(), size}, kKey);
    EXPECT_FALSE(opened.authentic);
    EXPECT_EQ(TextOf(opened), kPlaintext.substr(0, size - kHeaderSize));
    EXPECT_EQ(opened.stated_size, kPlaintext.size());
  }
}

TEST_P(OpenDamaged, GivesEveryByteThatDamageDoesNotTouch) {
  for (std::size_t i = 0; i < kPlaintext.size(); ++i) {
    const DamagedEnvelope opened = zuna_sec::OpenDamaged(Flipped(kHeaderSize + i), kKey);
    std::string expected = kPlaintext;
    expected[i] = static_cast<char>(expected[i] ^ 0x21);
    EXPECT_FALSE(opened.authentic);
    EXPECT_EQ(TextOf(opened), expected);
    EXPECT_EQ(opened.damaged_fields, Fields());
  }
}

TEST_P(OpenDamaged, VouchesForThePlaintextBehindADamagedHeader) {
  for (std::size_t i = 0; i < kTag; ++i) {
    const DamagedEnvelope opened = zuna_sec::OpenDamaged(Flipped(i), kKey);
    EXPECT_TRUE(opened.authentic) << i;
    EXPECT_EQ(TextOf(opened), kPlaintext);
    const char* const field = i < 8    ? "magic"
                              : i < 9  ? "version"
                              : i < 10 ? "suite"
                              : i < 16 ? "reserved bytes"
                              : i < 24 ? "length"
                                       : "key check";
    EXPECT_EQ(opened.damaged_fields, Fields{field}) << i;
  }
}

TEST_P(OpenDamaged, LosesThePlaintextWithTheTag) {
  const DamagedEnvelope opened = zuna_sec::OpenDamaged(Flipped(kTag), kKey);
  EXPECT_FALSE(opened.authentic);
  EXPECT_EQ(opened.plaintext.size(), kPlaintext.size());
  EXPECT_NE(TextOf(opened), kPlaintext);
}

TEST_P(OpenDamaged, TellsTrailingBytesFromTheRest) {
  ByteVector bytes = Good();
  bytes.insert(bytes.end(), 5, 'x');
  const DamagedEnvelope opened = zuna_sec::OpenDamaged(bytes, kKey);
  EXPECT_TRUE(opened.authentic);
  EXPECT_EQ(TextOf(opened), kPlaintext);
  EXPECT_EQ(opened.trailing, 5U);
}

TEST_P(OpenDamaged, GivesEverythingWhereLengthAndContentAreDamaged) {
  for (const std::uint8_t length : ByteVector{1, 255}) {
    ByteVector bytes = Flipped(kHeaderSize);
    bytes[16] = length;
    const DamagedEnvelope opened = zuna_sec::OpenDamaged(bytes, kKey);
    EXPECT_FALSE(opened.authentic);
    EXPECT_EQ(TextOf(opened).substr(1), kPlaintext.substr(1));
    EXPECT_EQ(opened.stated_size, length);
    EXPECT_EQ(opened.trailing, 0U);
    EXPECT_EQ(opened.damaged_fields, Fields());
  }
}

TEST_P(OpenDamaged, TakesNoMemoryForALengthThatIsNotThere) {
  ByteVector bytes = Good();
  bytes[23] = 0xFF;
  EXPECT_EQ(TextOf(zuna_sec::OpenDamaged(bytes, kKey)), kPlaintext);
}

TEST_P(OpenDamaged, RecognisesTheKeyByMostOfTheKeyCheck) {
  ByteVector bytes = Good();
  for (std::size_t i = 24; i < 32; ++i) bytes[i] ^= 1;
  EXPECT_EQ(TextOf(zuna_sec::OpenDamaged(bytes, kKey)), kPlaintext);
  bytes[32] ^= 1;
  EXPECT_THROW(zuna_sec::OpenDamaged(bytes, kKey), zuna_sec::WrongKeyError);
}

/// The message that `bytes` are refused with.
template <typename Error>
std::string Refusal(const ByteVector& bytes, const CipherKey& key = kKey) {
  return zuna_test::MessageOf<Error>([&] { zuna_sec::OpenDamaged(bytes, key); });
}

TEST_P(OpenDamaged, TellsAWrongKeyFromDamage) {
  const std::string message =
      "encrypted data: the key or the IV is not the one that this was encrypted with; give the right key "
      "file";
  const CipherKey other{{1}, {2}};
  EXPECT_EQ(Refusal<zuna_sec::WrongKeyError>(Good(), other), message);
  EXPECT_EQ(Refusal<zuna_sec::WrongKeyError>(Flipped(kTag), other), message);
  ByteVector cut = Good();
  cut.resize(kHeaderSize + 1);
  EXPECT_EQ(Refusal<zuna_sec::WrongKeyError>(cut, other), message);
}

TEST_P(OpenDamaged, RefusesWhatIsNoEnvelope) {
  EXPECT_EQ(Refusal<zuna_sec::EmptyError>({}),
            "encrypted data: is empty, not an encrypted file; give another file");
  EXPECT_EQ(Refusal<zuna_sec::NotEncryptedError>(ByteVector(100, 'x')),
            "encrypted data: is not an encrypted file of this kind (offset 0); give an encrypted show or log "
            "file");
  ByteVector newer = Good();
  newer[8] = 2;
  EXPECT_EQ(Refusal<zuna_sec::UnsupportedEnvelopeError>(newer, CipherKey{{1}, {2}}),
            "encrypted data: envelope version 2 is not supported, only 1 is (offset 8); use a newer release");
}

TEST_P(OpenDamaged, NeedsAWholeHeader) {
  ByteVector bytes = Good();
  bytes.resize(kHeaderSize - 1);
  EXPECT_EQ(Refusal<zuna_sec::TruncatedError>(bytes),
            "encrypted data: ends inside the header (offset 71 of 72); get a complete copy of the file");
}

TEST_P(OpenDamaged, TakesTheSuiteFromTheKeyCheck) {
  for (unsigned suite = 0; suite < 256; ++suite) {
    ByteVector bytes = Good();
    bytes[9] = static_cast<std::uint8_t>(suite);
    bytes[24] ^= 1;  // key check
    const DamagedEnvelope opened = zuna_sec::OpenDamaged(bytes, kKey);
    EXPECT_TRUE(opened.authentic);
    EXPECT_EQ(TextOf(opened), kPlaintext);
  }
}

INSTANTIATE_TEST_SUITE_P(Suites, OpenDamaged, testing::ValuesIn(zuna_security::kSuites),
                         zuna_test::SuiteName);

}  // namespace
