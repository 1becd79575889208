// Damage in legacy files: in which song it is, and at which byte.
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "toolkit/document/open.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using namespace std::string_literals;

/// A song of 53 bytes.
std::string Song(const std::string& number) {
  return "\0\0\0\0"s  // 0: length of the record, which is not used
         "\1" +
         number +                          // 4: number, a single character
         "\4Tune"                          // 6: name
         "\xE0\1"                          // 11: division
         "\0\0\0\0"                        // 13: length
         "\0"                              // 17: no tracks
         "\1\0\0\0"                        // 18: one event
         "\0\0\0\0\0\0\0\0\x90\x3C\x64\1"  // 22: the event
         "TLMN"                            // 34: magic of the timeline
         "\1N"                             // 38: name
         "\0\0\0\0"                        // 40: length
         "\5\0\0\0"                        // 44: length of the lists
         "F\0\0\0\0"s;                     // 48: no tempos
}

/// The songs "7", from byte 1, and "8", from byte 54.
std::string Show() { return "\2" + Song("7") + Song("8"); }

/// A song log of 29 bytes.
std::string SongLog(const std::string& number) {
  return "\xD\0\0\0"s  // 0: size of the lists less 4
         "\1" +
         number +                      // 4: number, a single character
         "\1T"                         // 6: name
         "\0\0\0\0"                    // 8: length
         "B\xC\0\0\0"                  // 12: cuts, 12 bytes
         "B\x9\0\0\0\0\0\1\0\0\0\0"s;  // 17: a cut
}

/// The song logs "7", from byte 32, and "8", from byte 61.
std::string Log() {
  return "ZUNA"
         "\x52\0\0\0"                        // 4: 82 bytes follow
         "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"  // 8: identifier
         "\1L"                               // 24: label
         "\1S"                               // 26: name of the show
         "\0\0\0\0"s +                       // 28: two tags
         SongLog("7") +
         SongLog("8");
}

/// Reads `bytes` out of an encrypted file.
Document Read(const std::string& bytes) {
  OpenedFile file = OpenedFile::FromBytes(zuna_test::Encrypted(bytes), "f", zuna_test::kKey);
  return ReadDocument(file);
}

Error ErrorOf(const std::string& bytes) {
  try {
    Read(bytes);
  } catch (const Error& error) {
    return error;
  }
  throw std::logic_error("nothing was thrown");
}

void ExpectCutOff(const std::string& bytes, const std::string& song, const std::string& what) {
  const Error error = ErrorOf(bytes);
  EXPECT_EQ(error.code(), ErrorCode::kCutOff) << error.what();
  EXPECT_EQ(error.parts().file, "f");
  EXPECT_EQ(error.parts().song, song) << error.what();
  EXPECT_EQ(error.parts().offset, bytes.size());
  EXPECT_EQ(error.what(), "f: cannot be read as a " + what + " (offset " + std::to_string(bytes.size()) +
                              "); get a complete copy of the file");
}

void ExpectDamage(const std::string& bytes, const std::string& song, std::uint64_t offset,
                  const std::string& what) {
  const Error error = ErrorOf(bytes);
  EXPECT_EQ(error.code(), ErrorCode::kBadContent) << error.what();
  EXPECT_EQ(error.parts().song, song) << error.what();
  EXPECT_EQ(error.parts().offset, offset);
  EXPECT_EQ(error.what(), "f: cannot be read as a " + what + " (offset " + std::to_string(offset) +
                              "); get an undamaged copy of the file");
}

std::string With(std::string bytes, std::size_t offset, const std::string& change) {
  return bytes.replace(offset, change.size(), change);
}

const std::string kShow = "show of version 0.0: it ";
const std::string kLog = "log of version 0.0: it ";

TEST(LegacyDamage, IsNotInTheSamples) {
  EXPECT_NE(Read(Show()).As<LegacyShow>(), nullptr);
  EXPECT_NE(Read(Log()).As<LegacyLog>(), nullptr);
}

TEST(LegacyDamage, IsNotThatOfAnEmptyFile) {
  for (const Accept accept : {Accept::kEncrypted, Accept::kEncryptedOrPlain}) {
    try {
      OpenedFile::FromBytes({}, "f", {}, accept);
      FAIL() << "nothing was thrown";
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kEmptyFile);
      EXPECT_STREQ(error.what(), "f: is empty, not an encrypted file; give another file");
    }
  }
}

TEST(LegacyDamage, OfAShowThatIsCutOff) {
  ExpectCutOff("", "", kShow + "ends before its first song");
  ExpectCutOff(Show().substr(0, 1), "", kShow + "ends before song 1 of 2");
  ExpectCutOff(Show().substr(0, 54), "", kShow + "ends before song 2 of 2");
  for (std::size_t size = 2; size < Show().size(); ++size) {
    if (size == 54) continue;
    const std::size_t begin = size < 54 ? 1 : 54;
    const std::string number = size < begin + 6 ? "" : begin == 1 ? "7" : "8";
    ExpectCutOff(Show().substr(0, size), number,
                 kShow + "ends inside song " + (begin == 1 ? "1" : "2") + " of 2" +
                     (number.empty() ? "" : ", number " + number) + ", which begins at byte " +
                     std::to_string(begin));
  }
}

TEST(LegacyDamage, OfAShowWithWrongBytes) {
  const std::string place = kShow + "is damaged in song 2 of 2, number 8, which begins at byte 54";
  ExpectDamage(With(Show(), 54 + 34, "X"), "8", 54 + 34, place);  // the magic of the timeline
  ExpectDamage(With(Show(), 54 + 48, "?"), "8", 54 + 48, place);  // the code of a list
}

TEST(LegacyDamage, OfAShowWithLengthsBeyondTheEnd) {
  const std::string place = kShow + "ends inside song 2 of 2, number 8, which begins at byte 54";
  ExpectCutOff(With(Show(), 54 + 18, "\xFF\xFF\xFF\xFF"), "8", place);  // the number of events
  ExpectCutOff(With(Show(), 54 + 44, "\xFF\xFF\xFF\x7F"), "8", place);  // the length of the lists
  ExpectCutOff(With(Show(), 54 + 49, "\xFF\xFF\xFF\x7F"), "8", place);  // the length of the tempos
  // Beyond the end of its song only: what comes next is no list.
  ExpectDamage(With(Show(), 1 + 44, "\x7F"), "7", 54,
               kShow + "is damaged in song 1 of 2, number 7, which begins at byte 1");
}

TEST(LegacyDamage, OfALogThatIsCutOff) {
  for (std::size_t size = 4; size < 32; ++size) {
    ExpectCutOff(Log().substr(0, size), "", kLog + "ends before its first song");
  }
  ExpectCutOff(Log().substr(0, 32), "", kLog + "ends before song 1");
  ExpectCutOff(Log().substr(0, 61), "", kLog + "ends before song 2");
  for (std::size_t size = 33; size < Log().size(); ++size) {
    if (size == 61) continue;
    const std::size_t begin = size < 61 ? 32 : 61;
    const std::string number = size < begin + 6 ? "" : begin == 32 ? "7" : "8";
    ExpectCutOff(Log().substr(0, size), number,
                 kLog + "ends inside song " + (begin == 32 ? "1" : "2") +
                     (number.empty() ? "" : ", number " + number) + ", which begins at byte " +
                     std::to_string(begin));
  }
}

TEST(LegacyDamage, OfALogWithWrongBytes) {
  const std::string place = kLog + "is damaged in song 1, number 7, which begins at byte 32";
  ExpectDamage(With(Log(), 32 + 12, "?"), "7", 32 + 12, place);  // the code of a list
  ExpectDamage(With(Log(), 32 + 17, "A"), "7", 32 + 17, place);  // the code of a record
}

TEST(LegacyDamage, OfALogWithALengthBeyondTheEnd) {
  ExpectDamage(With(Log(), 61 + 13, "\xFF\xFF\xFF\x7F") + "?", "8", 90,
               kLog + "is damaged in song 2, number 8, which begins at byte 61");
  ExpectCutOff(With(Log(), 61 + 13, "\xFF\xFF\xFF\x7F"), "8",
               kLog + "ends inside song 2, number 8, which begins at byte 61");
}

TEST(LegacyDamage, OfALogThatGoesOn) {
  const Error error = ErrorOf(Log() + "tail");
  EXPECT_EQ(error.code(), ErrorCode::kBytesAfterEnd);
  EXPECT_EQ(error.parts().offset, 90U);
  EXPECT_STREQ(
      error.what(),
      "f: cannot be read as a log of version 0.0: it has another length than its header says (offset "
      "90); get another copy of the file");
}

TEST(LegacyDamage, IsNotToldOfAFileThatHadAnotherMark) {
  for (const std::string& bytes :
       {"UZSH\x20\0\0\0\1\2 and more"s, "\0Z\x4CG\x20\0\0\0\1\2 and more"s.replace(0, 1, "U"),
        "x" + Log().substr(1), "x\n  \"kind\": \"logdata\",\n  \"fileVersion\": \"2.0\","s}) {
    const Error error = ErrorOf(bytes);
    EXPECT_EQ(error.code(), ErrorCode::kNotAShowOrLog) << error.what();
    EXPECT_STREQ(error.what(), "f: is no show and no log of any version; give an undamaged file");
  }
}

}  // namespace
}  // namespace zuna_toolkit
