// Every field of an envelope, and every refusal with its message; docs/envelope.md.

#include "platform/security/envelope.h"

#include <gtest/gtest.h>

#include "tests/platform/security/sealed.h"
#include "zuna_sec/errors.h"

namespace {

using zuna_test::ByteVector;
using zuna_test::FromText;

const char* const kPlaintext = "A show, in short.";  // 17 bytes: one block and one byte

ByteVector Key() { return FromText("0123456789abcdef"); }
ByteVector Iv() { return FromText("fedcba98"); }

/// Envelopes of each suite.
class Envelope : public testing::TestWithParam<zuna_security::Suite> {
 protected:
  static ByteVector Good() { return Sealed(kPlaintext, {Key(), Iv()}); }

  static ByteVector Sealed(const std::string& plaintext, const CipherKey& key) {
    return zuna_test::Sealed(GetParam(), plaintext, key);
  }
};

/// "(offset 72" of a message, or "(offset 8 of 72".
std::optional<std::uint64_t> OffsetIn(const std::string& message) {
  const std::string before = "(offset ";
  const std::size_t at = message.find(before);
  if (at == std::string::npos) return std::nullopt;
  return std::stoull(message.substr(at + before.size()));
}

/// Opens with the right key and gives the message that the bytes are refused with. Its offset is the error's.
template <typename Error>
std::string Refusal(const ByteVector& bytes, const ByteVector& key = Key(), const ByteVector& iv = Iv()) {
  try {
    zuna_test::Decrypted(bytes, {key, iv});
  } catch (const Error& error) {
    EXPECT_EQ(typeid(error), typeid(Error)) << error.what();
    EXPECT_EQ(error.offset(), OffsetIn(error.what())) << error.what();
    return error.what();
  }
  ADD_FAILURE() << "accepted";
  return "";
}

TEST_P(Envelope, HasItsFieldsWhereTheyBelong) {
  const ByteVector bytes = Good();
  ASSERT_EQ(bytes.size(), 72U + 17U);
  const ByteVector beginning{
      0x89,
      0x5A,
      0x53,
      0x43,
      0x0D,
      0x0A,
      0x1A,
      0x0A,                                   // magic
      1,                                      // envelope version
      static_cast<std::uint8_t>(GetParam()),  // suite
      0,
      0,
      0,
      0,
      0,
      0,  // zero
      17,
      0,
      0,
      0,
      0,
      0,
      0,
      0,  // plaintext length
  };
  EXPECT_EQ(ByteVector(bytes.begin(), bytes.begin() + 24), beginning);
}

TEST_P(Envelope, IsTheSameEveryTime) { EXPECT_EQ(Good(), Good()); }

TEST_P(Envelope, KeepsKeyAndIvApart) {
  const ByteVector bytes = Sealed("x", {FromText("ab"), FromText("c")});
  EXPECT_EQ(zuna_test::Decrypted(bytes, {FromText("ab"), FromText("c")}), "x");
  Refusal<zuna_sec::WrongKeyError>(bytes, FromText("a"), FromText("bc"));
  Refusal<zuna_sec::WrongKeyError>(bytes, FromText("abc"), {});
  Refusal<zuna_sec::WrongKeyError>(bytes, FromText("c"), FromText("ab"));
}

TEST_P(Envelope, TakesKeysAndIvsOfAnyLength) {
  for (const std::size_t key_size : {0U, 1U, 16U, 32U, 63U, 64U, 65U, 1000U}) {
    for (const std::size_t iv_size : {0U, 1U, 16U, 300U}) {
      const ByteVector key(key_size, 1);
      const ByteVector iv(iv_size, 2);
      EXPECT_EQ(zuna_test::Decrypted(Sealed("text", {key, iv}), {key, iv}), "text");
    }
  }
}

TEST_P(Envelope, WrongKeyOrIv) {
  const std::string message =
      "encrypted data: the key or the IV is not the one that this was encrypted with; give the right key "
      "file";
  EXPECT_EQ(Refusal<zuna_sec::WrongKeyError>(Good(), FromText("0123456789abcdeF"), Iv()), message);
  EXPECT_EQ(Refusal<zuna_sec::WrongKeyError>(Good(), Key(), FromText("fedcba99")), message);
  EXPECT_EQ(Refusal<zuna_sec::WrongKeyError>(Good(), {}, {}), message);
}

TEST_P(Envelope, Empty) {
  EXPECT_EQ(Refusal<zuna_sec::EmptyError>({}),
            "encrypted data: is empty, not an encrypted file; give another file");
}

TEST_P(Envelope, ForeignData) {
  EXPECT_EQ(
      Refusal<zuna_sec::NotEncryptedError>(FromText("MThd")),
      "encrypted data: is not an encrypted file of this kind (offset 0); give an encrypted show or log file");
}

/// `good` whose magic became `beginning`.
ByteVector Transferred(const ByteVector& good, const std::string& beginning) {
  ByteVector bytes = FromText(beginning);
  bytes.insert(bytes.end(), good.begin() + 8, good.end());
  return bytes;
}

TEST_P(Envelope, ChangedInTransfer) {
  const std::string line_ends =
      "encrypted data: was changed in transfer: its line ends are not as they were (offset 4); copy it again "
      "as binary";
  for (const char* beginning : {
           "\x89ZSC\n\x1a\n",        // CR LF became LF, or CR was removed
           "\x89ZSC\r\r\n\x1a\r\n",  // LF became CR LF
           "\x89ZSC\r\n\x1a\r\n",    // LF became CR LF, where no CR was before it
           "\x89ZSC\n\n\x1a\n",      // CR became LF
           "\x89ZSC\r\r\x1a\r",      // LF became CR
           "\x89ZSC\r\x1a",          // LF was removed
       }) {
    EXPECT_EQ(Refusal<zuna_sec::ChangedInTransferError>(FromText(beginning)), line_ends);
    EXPECT_EQ(Refusal<zuna_sec::ChangedInTransferError>(Transferred(Good(), beginning)), line_ends);
  }
  EXPECT_EQ(
      Refusal<zuna_sec::ChangedInTransferError>(Transferred(Good(), "\x09ZSC\r\n\x1a\n")),
      "encrypted data: was changed in transfer: its bytes have lost their eighth bit (offset 0); copy it "
      "again as binary");
}

TEST_P(Envelope, EncodedAgainInTransfer) {
  for (const char* beginning : {
           "\xC2\x89ZSC\r\n\x1a\n",      // Latin-1 became UTF-8
           "\xEF\xBF\xBDZSC\r\n\x1a\n",  // what is not UTF-8 became U+FFFD
       }) {
    EXPECT_EQ(
        Refusal<zuna_sec::ChangedInTransferError>(Transferred(Good(), beginning)),
        "encrypted data: was changed in transfer: its bytes were encoded as UTF-8 (offset 0); copy it again "
        "as binary");
  }
}

TEST_P(Envelope, ChangedInAnotherWayIsForeignData) {
  for (const char* beginning :
       {"\x89ZSC\n\x1a", "\x89ZSC\r\r", "\x89ZSC\r\n\n", "\x09ZSC\n\x1a\n", "ZSC\r\n\x1a\n"}) {
    Refusal<zuna_sec::NotEncryptedError>(FromText(beginning));
  }
}

TEST_P(Envelope, UnknownVersionSuiteOrFlag) {
  ByteVector bytes = Good();
  bytes[8] = 2;
  EXPECT_EQ(Refusal<zuna_sec::UnsupportedEnvelopeError>(bytes),
            "encrypted data: envelope version 2 is not supported, only 1 is (offset 8); use a newer release");
  bytes = Good();
  bytes[9] = 255;
  EXPECT_EQ(
      Refusal<zuna_sec::UnsupportedEnvelopeError>(bytes),
      "encrypted data: cipher suite 255 is not supported, only 1 and 2 are (offset 9); use a newer release");
  bytes = Good();
  bytes[15] = 4;
  EXPECT_EQ(
      Refusal<zuna_sec::UnsupportedEnvelopeError>(bytes),
      "encrypted data: a reserved byte is 4 instead of 0 (offset 15); use a newer release or another copy of "
      "the file");
}

TEST_P(Envelope, TruncatedHeader) {
  ByteVector bytes = Good();
  bytes.resize(71);
  EXPECT_EQ(Refusal<zuna_sec::TruncatedError>(bytes),
            "encrypted data: ends inside the header (offset 71 of 72); get a complete copy of the file");
}

TEST_P(Envelope, TruncatedCiphertext) {
  ByteVector bytes = Good();
  bytes.pop_back();
  EXPECT_EQ(
      Refusal<zuna_sec::TruncatedError>(bytes),
      "encrypted data: ends after 16 of 17 encrypted bytes (offset 88); get a complete copy of the file");
}

TEST_P(Envelope, TrailingBytes) {
  ByteVector bytes = Good();
  for (int more = 0; more < 40; ++more) {
    bytes.push_back(0);
    EXPECT_EQ(
        Refusal<zuna_sec::TrailingBytesError>(bytes),
        "encrypted data: goes on after its 17 encrypted bytes (offset 89); get another copy of the file");
  }
}

TEST_P(Envelope, Damage) {
  ByteVector bytes = Good();
  bytes.back() ^= 1;
  EXPECT_EQ(
      Refusal<zuna_sec::DamagedError>(bytes),
      "encrypted data: was changed after it was encrypted, though the key is right; get an undamaged copy of "
      "the file");
}

TEST_P(Envelope, NoMemoryIsReservedForALengthThatIsNotThere) {
  ByteVector bytes = Good();
  for (std::size_t i = 16; i < 24; ++i) bytes[i] = 0xFF;
  EXPECT_EQ(Refusal<zuna_sec::TruncatedError>(bytes),
            "encrypted data: ends after 17 of 18446744073709551615 encrypted bytes (offset 89); get a "
            "complete copy of "
            "the file");
}

TEST_P(Envelope, EveryTruncationIsRefused) {
  for (std::size_t size = 1; size < Good().size(); ++size) {
    ByteVector bytes = Good();
    bytes.resize(size);
    Refusal<zuna_sec::TruncatedError>(bytes);
  }
}

/// Every other value of each byte in [begin, end) is refused as `Error` or a class derived from it.
template <typename Error>
void ExpectRefused(const ByteVector& good, std::size_t begin, std::size_t end) {
  for (std::size_t i = begin; i < end; ++i) {
    for (unsigned change = 1; change < 256; ++change) {
      ByteVector bytes = good;
      bytes[i] = static_cast<std::uint8_t>(bytes[i] ^ change);
      EXPECT_THROW(zuna_test::Decrypted(bytes, {Key(), Iv()}), Error) << i << ' ' << change;
    }
  }
}

TEST_P(Envelope, EveryChangeOfAByteIsRefused) {
  const ByteVector good = Good();
  ExpectRefused<zuna_sec::NotEncryptedError>(good, 0, 8);
  ExpectRefused<zuna_sec::UnsupportedEnvelopeError>(good, 8, 9);
  ExpectRefused<zuna_sec::UnsupportedEnvelopeError>(good, 10, 16);
  ExpectRefused<zuna_sec::TruncatedError>(good, 17, 24);
  ExpectRefused<zuna_sec::WrongKeyError>(good, 24, 56);
  ExpectRefused<zuna_sec::DamagedError>(good, 56, good.size());
}

// Suites share no keys, so that the number of another suite that is known appears as a wrong key.
TEST_P(Envelope, EveryOtherSuiteIsRefused) {
  for (unsigned suite = 0; suite < 256; ++suite) {
    ByteVector bytes = Good();
    if (suite == bytes[9]) continue;
    bytes[9] = static_cast<std::uint8_t>(suite);
    if (suite == 1 || suite == 2) {
      Refusal<zuna_sec::WrongKeyError>(bytes);
    } else {
      Refusal<zuna_sec::UnsupportedEnvelopeError>(bytes);
    }
  }
}

TEST_P(Envelope, EveryOtherLengthIsRefused) {
  for (unsigned length = 0; length < 256; ++length) {
    ByteVector bytes = Good();
    bytes[16] = static_cast<std::uint8_t>(length);
    if (length < 17) Refusal<zuna_sec::TrailingBytesError>(bytes);
    if (length > 17) Refusal<zuna_sec::TruncatedError>(bytes);
  }
}

TEST_P(Envelope, EveryChangeOfAnEmptyPlaintextIsRefused) {
  const ByteVector good = Sealed("", {Key(), Iv()});
  ASSERT_EQ(good.size(), 72U);
  EXPECT_EQ(zuna_test::Decrypted(good, {Key(), Iv()}), "");
  ExpectRefused<zuna_sec::TruncatedError>(good, 16, 24);
  ExpectRefused<zuna_sec::WrongKeyError>(good, 24, 56);
  ExpectRefused<zuna_sec::DamagedError>(good, 56, 72);
}

TEST_P(Envelope, LengthIsBoundToTheCiphertext) {
  ByteVector bytes = Good();
  bytes.resize(bytes.size() - 1);
  bytes[16] = 16;  // consistent, but not what was sealed
  Refusal<zuna_sec::DamagedError>(bytes);
}

INSTANTIATE_TEST_SUITE_P(Suites, Envelope, testing::ValuesIn(zuna_security::kSuites), zuna_test::SuiteName);

TEST(EnvelopeSize, MoreThanOneGibibyteDoesNotFit) {
  EXPECT_NO_THROW(zuna_security::CheckPlaintextSize(1073741824, "big.showdata"));
  try {
    zuna_security::CheckPlaintextSize(1073741825, "big.showdata");
    FAIL();
  } catch (const zuna_sec::TooLargeError& error) {
    EXPECT_STREQ(error.what(),
                 "big.showdata: holds more than 1 GiB, the most that an encrypted file can; split the show");
  }
}

}  // namespace
