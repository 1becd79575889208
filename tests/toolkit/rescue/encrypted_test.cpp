// The report of a rescue of encrypted files: damage of the encryption, and what stands before and after it.
#include "toolkit/rescue/rescue.h"

#include <gtest/gtest.h>

#include <tuple>

#include "tests/support/legacy_samples.h"
#include "tests/support/rescue_accounts.h"
#include "tests/support/sample_models.h"
#include "tests/toolkit/rescue/rescue_samples.h"
#include "toolkit/error.h"

namespace {

using namespace std::string_literals;
using zuna_test::ByteVector;
using zuna_toolkit::ErrorCode;
using zuna_toolkit::Rescued;
using zuna_toolkit::SongState;

using Texts = std::vector<std::string>;

ByteVector Sealed() { return zuna_test::Encrypted(zuna_test::Written(zuna_test::SampleLegacyShow())); }

Rescued RescuedOfSealed(const ByteVector& bytes, const CipherKey& key = zuna_test::kKey) {
  return zuna_toolkit::Rescue(bytes, "file", key);
}

TEST(RescueOfAnEncryptedFile, SaysThatNothingIsMissing) {
  const Rescued rescued = RescuedOfSealed(Sealed());
  EXPECT_TRUE(rescued.report.complete());
  EXPECT_EQ(rescued.report.remarks, Texts());
  EXPECT_TRUE(rescued.report.songs.at(0).vouched);
}

TEST(RescueOfAnEncryptedFile, VouchesForSongsBehindADamagedHeader) {
  ByteVector bytes = Sealed();
  bytes[0] ^= 1;
  bytes.push_back('\0');
  const Rescued rescued = RescuedOfSealed(bytes);
  EXPECT_TRUE(rescued.report.complete());
  EXPECT_TRUE(rescued.report.songs.at(0).vouched);
  EXPECT_EQ(rescued.report.remarks,
            (Texts{"the header of its encryption is damaged (magic)", "1 byte follows its encrypted bytes"}));
}

TEST(RescueOfAnEncryptedFile, VouchesForNoSongOfAChangedFile) {
  ByteVector bytes = Sealed();
  bytes.back() ^= 1;
  const Rescued rescued = RescuedOfSealed(bytes);
  EXPECT_EQ(rescued.report.remarks, Texts{"was changed after it was encrypted"});
  EXPECT_EQ(rescued.report.saved(), 2U);
  EXPECT_TRUE(rescued.report.changed);
  EXPECT_FALSE(rescued.report.complete());
  EXPECT_FALSE(rescued.report.songs.at(0).vouched);
}

TEST(RescueOfAnEncryptedFile, TellsHowMuchIsCutOff) {
  ByteVector bytes = Sealed();
  const std::size_t size = bytes.size() - 72;
  bytes.pop_back();
  const Rescued rescued = RescuedOfSealed(bytes);
  EXPECT_EQ(rescued.report.remarks, Texts{"has " + std::to_string(size - 1) +
                                          " encrypted bytes, and its header states " + std::to_string(size)});
  EXPECT_EQ(rescued.report.songs.at(0).state, SongState::kWhole);
  EXPECT_EQ(rescued.report.songs.at(1).state, SongState::kPartly);
}

template <typename... Arguments>
std::string Refusal(ErrorCode code, const Arguments&... arguments) {
  try {
    zuna_toolkit::Rescue(arguments...);
  } catch (const zuna_toolkit::Error& error) {
    EXPECT_EQ(error.code(), code);
    return error.what();
  }
  return "(nothing was thrown)";
}

TEST(RescueOfAnEncryptedFile, RefusesWhatItCannotOpen) {
  ByteVector bytes = Sealed();
  bytes.back() ^= 1;
  EXPECT_EQ(
      Refusal(ErrorCode::kWrongKey, bytes, "file"s, CipherKey{{1}, {}}),
      "file: the key or the IV is not the one that this was encrypted with, or its key check is damaged; "
      "give the right key file");
  EXPECT_EQ(Refusal(ErrorCode::kNoKey, bytes, "file"s, CipherKey{}),
            "file: is encrypted with a key, and none was given; give its key");
  bytes.resize(71);
  EXPECT_EQ(Refusal(ErrorCode::kCutOff, bytes, "file"s, zuna_test::kKey),
            "file: ends inside the header (offset 71 of 72); get a complete copy of the file");
  EXPECT_EQ(Refusal(ErrorCode::kEmptyFile, ByteVector(), "file"s, zuna_test::kKey),
            "file: is empty, not an encrypted file; give another file");
  EXPECT_EQ(Refusal(ErrorCode::kNotEncrypted, ByteVector(100, 'x'), "file"s, zuna_test::kKey),
            "file: is not an encrypted file of this kind (offset 0); give an encrypted show or log file");
}

TEST(RescueOfAnEncryptedFile, TellsWhatFollowsItsEncryptedBytes) {
  const ByteVector bytes = Sealed();
  const std::string plain = zuna_test::Written(zuna_test::SampleLegacyLog());
  const auto missing = [&](const std::string& tail) {
    ByteVector joined = bytes;
    joined.insert(joined.end(), tail.begin(), tail.end());
    const Rescued rescued = RescuedOfSealed(joined);
    EXPECT_EQ(rescued.report.saved(), 2U);
    EXPECT_EQ(rescued.report.complete(), rescued.report.missing.empty());
    return rescued.report.missing;
  };
  const auto begins_at = [&](std::size_t place) {
    return Texts{"the document that begins at byte " + std::to_string(bytes.size() + place) + " of the file"};
  };
  EXPECT_EQ(missing("\r\n \0\0"s), Texts());
  EXPECT_EQ(missing("xyz"), Texts{"the 3 bytes after its encrypted bytes"});
  EXPECT_EQ(missing(plain), begins_at(0));
  EXPECT_EQ(missing("\0\n"s + plain), begins_at(2));
  EXPECT_EQ(missing("xyz" + plain), begins_at(3));
  EXPECT_EQ(missing(zuna_test::Written(zuna_test::SampleLegacyShow())), begins_at(0));
  EXPECT_EQ(missing(zuna_test::WrittenAt(zuna_test::SampleShow(), {2, 0})), begins_at(0));
}

TEST(RescueOfAnEncryptedFile, TellsWhereAnotherEncryptedFileBegins) {
  const ByteVector next = Sealed();
  ByteVector cut = next;
  cut.pop_back();
  ByteVector headless = next;
  headless[0] ^= 1;
  headless[16] ^= 1;  // its length
  const ByteVector plain = zuna_test::FromText(zuna_test::Written(zuna_test::SampleLegacyLog()));
  for (ByteVector bytes : {next, cut, headless, plain}) {
    const std::size_t place = bytes.size();
    bytes.insert(bytes.end(), next.begin(), next.end());
    const auto accept = zuna_toolkit::Accept::kEncryptedOrPlain;
    const Rescued rescued = zuna_toolkit::Rescue(bytes, "file", zuna_test::kKey, accept);
    EXPECT_EQ(rescued.report.saved(), 2U);
    EXPECT_FALSE(rescued.report.complete());
    EXPECT_EQ(rescued.report.missing.back(), "the encrypted file that begins at byte " +
                                                 std::to_string(place) + " of this one (tail -c +" +
                                                 std::to_string(place + 1) + " takes it)");
  }
}

TEST(RescueOfAnEncryptedFile, CountsItAsUnreadBehindAPlainFile) {
  const ByteVector next = Sealed();
  const std::string whole = zuna_test::Written(zuna_test::SampleLegacyLog());
  std::string damaged = zuna_test::WrittenAt(zuna_test::SampleShow(), {1, 1});
  damaged.back() ^= 1;  // its checksum
  for (const std::string& plain : {whole, damaged}) {
    ByteVector bytes = zuna_test::FromText(plain);
    bytes.insert(bytes.end(), next.begin(), next.end());
    const auto accept = zuna_toolkit::Accept::kEncryptedOrPlain;
    const Rescued rescued = zuna_toolkit::Rescue(bytes, "file", {}, accept);
    ASSERT_FALSE(rescued.report.unread.empty());
    EXPECT_EQ(rescued.report.unread.back(), (zuna_toolkit::ByteRange{plain.size(), bytes.size()}));
    EXPECT_EQ(zuna_test::WrongAccount(rescued.report, bytes.size()), "");
  }
}

TEST(RescueOfAnEncryptedFile, TellsWhereAllOthersBegin) {
  const ByteVector one = Sealed();
  constexpr std::size_t kTold = 100;
  for (const std::size_t count : {std::size_t{2}, kTold, kTold + 1, kTold + 2}) {
    ByteVector bytes = one;
    Texts missing;
    for (std::size_t i = 0; i < count; ++i) {
      if (i < kTold) {
        missing.push_back("the encrypted file that begins at byte " + std::to_string(bytes.size()) +
                          " of this one (tail -c +" + std::to_string(bytes.size() + 1) + " takes it)");
      }
      bytes.insert(bytes.end(), one.begin(), one.end());
    }
    if (count == kTold + 1) missing.emplace_back("the rest of the file, with 1 more encrypted file");
    if (count == kTold + 2) missing.emplace_back("the rest of the file, with 2 more encrypted files");
    EXPECT_EQ(RescuedOfSealed(bytes).report.missing, missing);
  }
}

TEST(RescueOfAnEncryptedFile, TellsWhereAnEncryptedFileBeginsBehindOtherBytes) {
  const auto accept = zuna_toolkit::Accept::kEncryptedOrPlain;
  for (const std::string& front : {"\r\n"s, std::string(128, 'x'), "\x89ZSC\r\n\x1a\n\1\1"s}) {
    ByteVector bytes = zuna_test::FromText(front);
    const ByteVector next = Sealed();
    bytes.insert(bytes.end(), next.begin(), next.end());
    EXPECT_EQ(Refusal(ErrorCode::kNothingToSave, bytes, "file"s, zuna_test::kKey, accept),
              "file: holds no song that can be read before byte " + std::to_string(front.size()) +
                  ", where an encrypted file begins; take that file with tail -c +" +
                  std::to_string(front.size() + 1));
  }
}

TEST(RescueOfAnEncryptedFile, SavesNothingBehindADamagedTag) {
  ByteVector bytes = Sealed();
  bytes[56] ^= 1;
  EXPECT_EQ(Refusal(ErrorCode::kNothingToSave, bytes, "file"s, zuna_test::kKey),
            "file: holds no song that can be read; get another copy of the file");
}

/// `bytes`, encoded as UTF-8 as if they were Latin-1.
ByteVector InUtf8(const ByteVector& bytes) {
  ByteVector encoded;
  for (const std::uint8_t byte : bytes) {
    if (byte >= 0x80) encoded.push_back(byte < 0xC0 ? 0xC2 : 0xC3);
    encoded.push_back(byte < 0x80 ? byte : byte & 0xBF);
  }
  return encoded;
}

/// `bytes` with a CR before each LF, or before each that has none.
ByteVector InCrLf(const ByteVector& bytes, bool each) {
  ByteVector copied;
  for (const std::uint8_t byte : bytes) {
    if (byte == '\n' && (each || copied.back() != '\r')) copied.push_back('\r');
    copied.push_back(byte);
  }
  return copied;
}

/// `bytes` with LF for each CR LF.
ByteVector InLf(const ByteVector& bytes) {
  ByteVector copied;
  for (const std::uint8_t byte : bytes) {
    if (byte == '\n' && !copied.empty() && copied.back() == '\r') copied.pop_back();
    copied.push_back(byte);
  }
  return copied;
}

TEST(RescueOfAnEncryptedFile, UndoesACopyAsText) {
  const ByteVector bytes = Sealed();
  const Texts remark{"was copied as text; the copy is undone, and all bytes are verified"};
  for (const ByteVector& copied : {InUtf8(bytes), InCrLf(bytes, true), InCrLf(bytes, false), InLf(bytes)}) {
    const Rescued rescued = RescuedOfSealed(copied);
    EXPECT_TRUE(rescued.report.complete());
    EXPECT_TRUE(rescued.report.songs.front().vouched);
    EXPECT_EQ(rescued.report.remarks, remark);
    EXPECT_EQ(zuna_test::Written(rescued.document.As<zuna_toolkit::LegacyShow>()->show),
              zuna_test::Written(zuna_test::SampleLegacyShow()));
  }
}

TEST(RescueOfAnEncryptedFile, TellsThatItWasChangedInTransfer) {
  const std::string message = "file: was changed in transfer: ";
  const ByteVector bytes = Sealed();
  ByteVector damaged = InUtf8(bytes);
  damaged.back() ^= 1;
  ByteVector without_cr = bytes;
  without_cr.push_back('\r');  // as a part of the file that was lost
  without_cr = InLf(without_cr);
  without_cr.pop_back();
  without_cr.pop_back();
  for (const auto accept : {zuna_toolkit::Accept::kEncrypted, zuna_toolkit::Accept::kEncryptedOrPlain}) {
    EXPECT_EQ(Refusal(ErrorCode::kChangedInTransfer, damaged, "file"s, zuna_test::kKey, accept),
              message + "its bytes were encoded as UTF-8 (offset 0); copy it again as binary");
    EXPECT_EQ(Refusal(ErrorCode::kChangedInTransfer, without_cr, "file"s, zuna_test::kKey, accept),
              message + "its line ends are not as they were (offset 4); copy it again as binary");
    EXPECT_EQ(Refusal(ErrorCode::kChangedInTransfer, InUtf8(bytes), "file"s, CipherKey{{1}, {}}, accept),
              message + "its bytes were encoded as UTF-8 (offset 0); copy it again as binary");
  }
}

TEST(RescueOfAnEncryptedFile, TellsThatLineEndsWereChangedForOthers) {
  ByteVector bytes = Sealed();
  std::replace(bytes.begin(), bytes.end(), std::uint8_t{'\r'}, std::uint8_t{'\n'});
  const Texts remarks = RescuedOfSealed(bytes).report.remarks;
  ASSERT_GE(remarks.size(), 2U);
  EXPECT_EQ(remarks[0], "was changed in transfer: its line ends are not as they were");
  EXPECT_EQ(remarks[1], "the header of its encryption is damaged (magic)");
}

TEST(RescueOfAnEncryptedFile, UndoesNoCopyOfMoreThanOneFile) {
  const ByteVector one = Sealed();
  ByteVector two = one;
  two.insert(two.end(), one.begin(), one.end());
  ByteVector more = one;
  more.insert(more.end(), 2, 'x');
  for (const ByteVector& bytes : {two, more}) {
    for (const ByteVector& copied : {InCrLf(bytes, true), InUtf8(bytes)}) {
      const std::string said = Refusal(ErrorCode::kChangedInTransfer, copied, "file"s, zuna_test::kKey);
      EXPECT_EQ(said.substr(0, said.find(':', 6)), "file: was changed in transfer");
    }
  }
}

TEST(RescueOfAnotherFile, TakesALegacyShowThatBeginsLikeAnArchive) {
  std::string bytes = zuna_test::Written(zuna_test::LegacyShowLikeGzip());
  ASSERT_EQ(bytes.substr(0, 3), "\x1F\x8B\x08");
  bytes.resize(bytes.size() - 3);
  const auto rescued = zuna_toolkit::Rescue(zuna_test::FromText(bytes), "file", zuna_test::kKey,
                                            zuna_toolkit::Accept::kEncryptedOrPlain);
  EXPECT_EQ(rescued.report.songs.size(), 31U);
  EXPECT_EQ(rescued.report.saved(), 31U);
  EXPECT_EQ(rescued.report.songs.front().state, zuna_toolkit::SongState::kWhole);
}

TEST(RescueOfAnotherFile, NamesItsFormat) {
  const auto accept = zuna_toolkit::Accept::kEncryptedOrPlain;
  const ByteVector sealed = Sealed();
  for (const auto& [mark, code, problem] :
       {std::tuple{"MThd\0\0\0\6"s, ErrorCode::kMidiFile, "file: is a MIDI file; use midi import"s},
        std::tuple{"PK\3\4\x14\0\0\0"s, ErrorCode::kArchive,
                   "file: is a zip archive; unpack it, and give the file that comes out"s},
        std::tuple{"\x1F\x8B\x08\0\0\0"s, ErrorCode::kArchive,
                   "file: is compressed with gzip; unpack it, and give the file that comes out"s}}) {
    ByteVector bytes = zuna_test::FromText(mark + "music.showdata");
    EXPECT_EQ(Refusal(code, bytes, "file"s, zuna_test::kKey, accept), problem);
    bytes.insert(bytes.end(), sealed.begin(), sealed.end());
    EXPECT_EQ(Refusal(code, bytes, "file"s, zuna_test::kKey, accept), problem);
  }
}

}  // namespace
