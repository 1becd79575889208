#include "toolkit/document/open.h"
#include "toolkit/document/text_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "cmn/file_format.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/log_equality.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/show_equality.h"
#include "tests/support/temporary_folder.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using namespace std::string_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using zuna_test::Encrypted;
using zuna_test::kKey;
using zuna_test::Written;
using zuna_test::WrittenAt;

/// Opens `plaintext` both ways: encrypted, and plain where that is accepted.
class OpenTest : public testing::Test {
 protected:
  std::vector<Document> OpenBothWays(const std::string& plaintext) const {
    const std::vector<std::uint8_t> sealed = Encrypted(plaintext);
    const std::string encrypted = folder_.Put("encrypted", {sealed.begin(), sealed.end()});
    const std::string plain = folder_.Put("plain", plaintext);
    return {OpenDocument(encrypted, kKey), OpenDocument(plain, kKey, Accept::kEncryptedOrPlain)};
  }

  /// The error that opening these bytes gives.
  Error ErrorOf(const std::string& bytes, const CipherKey& key = kKey) const {
    try {
      OpenDocument(folder_.Put("file", bytes), key);
    } catch (const Error& error) {
      return error;
    }
    throw std::logic_error("nothing was thrown");
  }

  Error ErrorOfPlaintext(const std::string& plaintext) const {
    const std::vector<std::uint8_t> sealed = Encrypted(plaintext);
    return ErrorOf({sealed.begin(), sealed.end()});
  }

  const zuna_test::TemporaryFolder folder_;
};

TEST_F(OpenTest, ReadsShowsOfEveryVersion) {
  std::mt19937 random(1);
  const zuna_midi::ShowData show = zuna_test::RandomShow(random);
  for (const cmn::FileVersion version : cmn::SupportedVersions(cmn::FileKind::kShow)) {
    for (const Document& document : OpenBothWays(WrittenAt(show, version))) {
      EXPECT_EQ(document.type(), (FileType{cmn::FileKind::kShow, version}));
      ASSERT_NE(document.As<zuna_midi::ShowData>(), nullptr);
      EXPECT_EQ(zuna_test::FirstDifference(*document.As<zuna_midi::ShowData>(), show), "");
      EXPECT_EQ(document.As<CL::ChangeLog>(), nullptr);
      EXPECT_THAT(document.name(), StartsWith(folder_.path().string()));
    }
  }
}

TEST_F(OpenTest, ReadsLogsOfEveryVersion) {
  std::mt19937 random(2);
  const CL::ChangeLog log = zuna_test::RandomLog(random);
  for (const cmn::FileVersion version : cmn::SupportedVersions(cmn::FileKind::kLog)) {
    for (const Document& document : OpenBothWays(WrittenAt(log, version))) {
      EXPECT_EQ(document.type(), (FileType{cmn::FileKind::kLog, version}));
      ASSERT_NE(document.As<CL::ChangeLog>(), nullptr);
      EXPECT_EQ(zuna_test::FirstDifference(*document.As<CL::ChangeLog>(), log), "");
    }
  }
}

TEST_F(OpenTest, ReadsLegacyShowsAndWhatTheirFilesHaveBesides) {
  std::mt19937 random(3);
  version0::ShowData show;
  while (show.songs.size() < 2) show = zuna_test::RandomLegacyShow(random);
  std::string bytes = Written(show);
  bytes[0] = static_cast<char>(bytes[0] + 1);
  bytes += Written(show.songs.begin()->second) + "tail";  // the first song once more, then 4 bytes
  for (const Document& document : OpenBothWays(bytes)) {
    EXPECT_EQ(document.type(), FileType());
    ASSERT_NE(document.As<LegacyShow>(), nullptr);
    EXPECT_EQ(Written(document.As<LegacyShow>()->show), Written(show));
    EXPECT_EQ(document.As<LegacyShow>()->replaced_songs, 1U);
    EXPECT_EQ(document.As<LegacyShow>()->trailing_bytes, 4U);
  }
}

TEST_F(OpenTest, ReadsLegacyLogsAndCountsReplacedSongs) {
  std::mt19937 random(4);
  const version0::ChangeLogV0 log = zuna_test::RandomLegacyLog(random);
  std::string bytes = Written(log);
  const std::string twice = Written(log.songs.rbegin()->second);
  bytes += twice;
  const std::size_t length = bytes.size() - 8;  // the magic (4) and this field (4) do not count
  for (std::size_t i = 0; i < 4; ++i) bytes[4 + i] = static_cast<char>(length >> (8 * i));
  for (const Document& document : OpenBothWays(bytes)) {
    EXPECT_EQ(document.type(), (FileType{cmn::FileKind::kLog, {}}));
    ASSERT_NE(document.As<LegacyLog>(), nullptr);
    EXPECT_EQ(Written(document.As<LegacyLog>()->log), Written(log));
    EXPECT_EQ(document.As<LegacyLog>()->replaced_songs, 1U);
  }
}

TEST_F(OpenTest, ReadsALegacyLogWithoutSongs) {
  version0::ChangeLogV0 log;
  log.show_name = "Show";
  log.log_label = "label";
  log.log_tag_pair = {3, 65535};
  for (const Document& document : OpenBothWays(Written(log))) {
    ASSERT_NE(document.As<LegacyLog>(), nullptr);
    EXPECT_EQ(Written(document.As<LegacyLog>()->log), Written(log));
  }
}

TEST_F(OpenTest, KnowsArchives) {
  for (const auto& [mark, problem] :
       {std::pair{"PK\3\4"s, "is a zip archive"}, std::pair{"7z\xBC\xAF\x27\x1C"s, "is a 7z archive"},
        std::pair{"Rar!\x1A\7"s, "is a RAR archive"}, std::pair{"\x1F\x8B\x08"s, "is compressed with gzip"},
        std::pair{"BZh91AY&SY"s, "is compressed with bzip2"},
        std::pair{"\xFD\x37zXZ\0"s, "is compressed with xz"},
        std::pair{"\x28\xB5\x2F\xFD"s, "is compressed with zstd"},
        std::pair{std::string(257, 'a') + "ustar"s, "is a tar archive"}}) {
    const Error error = ErrorOf(mark + std::string(100, '\x91'));
    EXPECT_EQ(error.code(), ErrorCode::kArchive);
    EXPECT_EQ(error.parts().problem, problem);
    EXPECT_EQ(error.parts().remedy, "unpack it, and give the file that comes out");
  }
}

TEST_F(OpenTest, ReadsALegacyShowThatBeginsLikeAnArchive) {
  const std::string bytes = Written(zuna_test::LegacyShowLikeGzip());
  ASSERT_EQ(bytes.substr(0, 3), "\x1F\x8B\x08");
  for (const Document& document : OpenBothWays(bytes)) {
    ASSERT_NE(document.As<LegacyShow>(), nullptr);
    EXPECT_EQ(Written(document.As<LegacyShow>()->show), bytes);
  }
  OpenedFile file(folder_.Put("file", bytes), kKey, Accept::kEncryptedOrPlain);
  EXPECT_EQ(Detect(file), FileType());
}

TEST_F(OpenTest, NamesTheFileAndTheRemedy) {
  EXPECT_EQ(ErrorOf("MThd").parts().problem, "is a MIDI file");
  EXPECT_EQ(ErrorOf("MThd").parts().remedy, "use midi import");
  EXPECT_EQ(ErrorOf("MThd").code(), ErrorCode::kMidiFile);
  EXPECT_EQ(ErrorOf("{}").parts().problem, "is plain text");
  EXPECT_EQ(ErrorOf(std::string("\0ZSH\2", 5)).parts().problem, "is a plain show");
  EXPECT_EQ(ErrorOf(std::string("\0ZLG\2", 5)).parts().problem, "is a plain log");
  EXPECT_EQ(ErrorOf("ZUNA").parts().problem, "is a plain log");
  EXPECT_EQ(ErrorOf("ZUNA").code(), ErrorCode::kPlainFile);
  const Error other = ErrorOf("something else");
  EXPECT_EQ(other.code(), ErrorCode::kNotEncrypted);
  EXPECT_EQ(other.parts().file, folder_ / "file");
  EXPECT_EQ(std::string(other.what()),
            other.parts().file + ": " + other.parts().problem + "; " + other.parts().remedy);
}

TEST_F(OpenTest, TellsAWrongKeyFromAMissingOne) {
  const std::vector<std::uint8_t> sealed = Encrypted("x");
  const std::string bytes(sealed.begin(), sealed.end());
  EXPECT_EQ(ErrorOf(bytes, {{1}, {2}}).code(), ErrorCode::kWrongKey);
  EXPECT_EQ(ErrorOf(bytes, {{}, {2}}).code(), ErrorCode::kWrongKey);
  EXPECT_EQ(ErrorOf(bytes, {}).code(), ErrorCode::kNoKey);
  EXPECT_EQ(ErrorOf(bytes, {}).parts().problem, "is encrypted with a key, and none was given");
}

TEST_F(OpenTest, SaysThatATransferHasChangedAFile) {
  const Error error = ErrorOf("\x89ZSC\n\x1a\n and the rest");
  EXPECT_EQ(error.code(), ErrorCode::kChangedInTransfer);
  EXPECT_EQ(error.parts().remedy, "copy it again as binary");
}

TEST_F(OpenTest, DoesNotTakeAFileThatWasChangedInTransferForAPlainOne) {
  const std::string bytes = "\x89ZSC\n\x1a\n and the rest";
  try {
    OpenedFile::FromBytes(zuna_test::FromText(bytes), "f", kKey, Accept::kEncryptedOrPlain);
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kChangedInTransfer);
  }
}

TEST_F(OpenTest, TellsAPlainLegacyShowFromOtherBytes) {
  std::mt19937 random(9);
  version0::ShowData show;
  while (show.songs.size() < 2) show = zuna_test::RandomLegacyShow(random);
  const std::string whole = Written(show);
  const std::string first = Written(show.songs.begin()->second);
  const auto plain_code = [this](const std::string& bytes) {
    try {
      OpenDocument(folder_.Put("file", bytes), kKey, Accept::kEncryptedOrPlain);
    } catch (const Error& error) {
      return error.code();
    }
    throw std::logic_error("nothing was thrown");
  };
  EXPECT_EQ(ErrorOf(whole).code(), ErrorCode::kPlainFile);
  EXPECT_EQ(ErrorOf(whole).parts().problem, "is a plain show");
  EXPECT_EQ(ErrorOf(std::string(1, '\0')).parts().problem, "is a plain show");  // without songs
  const std::string one_song_left = whole.substr(0, 1 + first.size());
  EXPECT_EQ(ErrorOf(one_song_left).code(), ErrorCode::kPlainFile);
  EXPECT_EQ(plain_code(one_song_left), ErrorCode::kCutOff);
  std::string damaged_mark;
  for (const std::uint8_t byte : Encrypted(whole)) damaged_mark.push_back(static_cast<char>(byte));
  damaged_mark[0] = 'x';
  const std::string no_song_left = one_song_left.substr(0, first.size());
  for (const std::string& bytes : {damaged_mark, no_song_left, "hello world"s, std::string(2, '\0')}) {
    EXPECT_EQ(ErrorOf(bytes).code(), ErrorCode::kNotEncrypted);
    EXPECT_EQ(plain_code(bytes), ErrorCode::kNotEncrypted);
    EXPECT_EQ(ErrorOfPlaintext(bytes).kind(), ErrorKind::kBadInput);
  }
}

TEST_F(OpenTest, SaysThatAFileCannotBeRead) {
  try {
    OpenDocument(folder_ / "none", kKey);
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kNotFound);
    EXPECT_EQ(error.parts().file, folder_ / "none");
    EXPECT_EQ(error.parts().remedy, "check the path");
    EXPECT_THAT(error.what(), StartsWith((folder_ / "none") + ": cannot be opened"));
  }
}

TEST_F(OpenTest, SaysThatAPathIsEmpty) {
  try {
    OpenDocument("", kKey);
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kNotFound);
    EXPECT_STREQ(error.what(), "\"\": an empty path names no file or folder; give a path");
  }
}

TEST_F(OpenTest, CarriesThePlaceOfAnErrorInAText) {
  const Error error = ErrorOfPlaintext(
      R"({"kind": "showdata", "fileVersion": "2.0", "showName": "", "songs": [{"songNumber": "7", "x": 1}]})");
  EXPECT_EQ(error.code(), ErrorCode::kTextError);
  EXPECT_TRUE(error.parts().offset.has_value());
  EXPECT_THAT(error.what(), HasSubstr("(at byte "));
  EXPECT_THAT(error.what(), EndsWith("; " + error.parts().remedy));
}

TEST_F(OpenTest, ReadsATextThatDoesNotStateWhatItHolds) {
  EXPECT_THAT(ErrorOfPlaintext("\xEF\xBB\xBF{}").what(),
              EndsWith("a byte order mark stands before the text (at byte 0); save the text without it"));
  EXPECT_THAT(ErrorOfPlaintext(" {}").what(),
              EndsWith("blanks stand before the text (at byte 0); remove them, so that \"{\" comes first"));
  EXPECT_THAT(ErrorOfPlaintext("{\"kind\": \"logdata\"}").what(), HasSubstr("(at byte "));
  EXPECT_EQ(ErrorOfPlaintext("\xEF\xBB\xBF{}").code(), ErrorCode::kTextError);
  EXPECT_EQ(ErrorOfPlaintext("\xEF\xBB\xBF{}").parts().offset, 0U);
  EXPECT_EQ(ErrorOfPlaintext(" {}").parts().offset, 0U);
}

TEST_F(OpenTest, TellsDamageFromAVersionThatIsNotKnown) {
  std::string bytes = WrittenAt(zuna_midi::ShowData(), {1, 2});
  EXPECT_EQ(ErrorOfPlaintext(bytes.substr(0, bytes.size() - 1)).code(), ErrorCode::kCutOff);
  EXPECT_EQ(ErrorOfPlaintext(bytes.substr(0, bytes.size() - 1)).parts().offset, bytes.size() - 1);
  EXPECT_EQ(ErrorOfPlaintext(bytes + "x").code(), ErrorCode::kBytesAfterEnd);
  EXPECT_EQ(ErrorOfPlaintext(bytes + "x").parts().offset, bytes.size());
  EXPECT_EQ(ErrorOfPlaintext(bytes.substr(0, bytes.size() - 1) + "x").code(), ErrorCode::kBadContent);
  bytes[8] = 9;  // the major version
  EXPECT_EQ(ErrorOfPlaintext(bytes).code(), ErrorCode::kUnsupportedVersion);
}

TEST_F(OpenTest, RefusesEveryTruncationOfALegacyFile) {
  std::mt19937 random(5);
  const std::string log = Written(zuna_test::RandomLegacyLog(random));
  for (std::size_t size = 0; size < log.size(); ++size) {
    EXPECT_EQ(ErrorOfPlaintext(log.substr(0, size)).kind(), ErrorKind::kBadInput) << size;
  }
  EXPECT_EQ(ErrorOfPlaintext(log.substr(0, log.size() - 1)).code(), ErrorCode::kCutOff);
  EXPECT_THAT(ErrorOfPlaintext("x").what(),
              EndsWith(": cannot be read as a show of version 0.0: it ends before song 1 of 120 (offset 1); "
                       "get a complete copy of the file"));
}

TEST(IsEncrypted, LooksAtTheBeginningOnly) {
  const std::vector<std::uint8_t> sealed = Encrypted("content");
  EXPECT_TRUE(IsEncrypted(sealed));
  EXPECT_TRUE(IsEncrypted(std::span(sealed).first(20)));
  EXPECT_FALSE(IsEncrypted(std::span(sealed).first(7)));
  EXPECT_FALSE(IsEncrypted(zuna_test::FromText("plain text, and long enough to be looked at")));
}

TEST(Detect, TellsShowsFromNoise) {
  std::mt19937 random(6);
  const auto message = [](const std::string& plaintext) {
    OpenedFile file = OpenedFile::FromBytes(Encrypted(plaintext), "name", kKey);
    return zuna_test::MessageOf<Error>([&] { Detect(file); });
  };
  EXPECT_EQ(message(Written(zuna_test::RandomLegacyShow(random))), "(nothing was thrown)");
  EXPECT_EQ(message("ZUNA, a log"), "(nothing was thrown)");
  const std::string neither = "name: is no show and no log of any version; give an undamaged file";
  EXPECT_EQ(message("noise"), neither);
  EXPECT_EQ(message(std::string(1, '\0')), "(nothing was thrown)");  // a show without songs
  EXPECT_EQ(message(std::string(2, '\0')), neither);
  EXPECT_EQ(message(std::string(6000, '\0')), neither);
}

TEST(ReadDocument, ReadsWhatIsExpectedOnly) {
  std::mt19937 random(8);
  const auto message = [](const std::string& plaintext, Expected expected) {
    OpenedFile file = OpenedFile::FromBytes(Encrypted(plaintext), "x", kKey);
    return zuna_test::MessageOf<Error>([&] { ReadDocument(file, expected); });
  };
  const std::string passed = "(nothing was thrown)";
  for (const Expected expected : {Expected::kAny, Expected::kShow, Expected::kLegacy, Expected::kCurrent}) {
    EXPECT_EQ(message(std::string(6000, '\0'), expected),
              "x: is no show and no log of any version; give an undamaged file");
  }
  const std::string show = Written(zuna_test::RandomLegacyShow(random));
  const std::string log = WrittenAt(zuna_test::RandomLog(random), {1, 2});
  for (const Expected expected : {Expected::kAny, Expected::kShow, Expected::kLegacy}) {
    EXPECT_EQ(message(show, expected), passed);
  }
  for (const Expected expected : {Expected::kAny, Expected::kCurrent}) {
    EXPECT_EQ(message(log, expected), passed);
  }
  EXPECT_EQ(message(show, Expected::kCurrent),
            "x: is a show of version 0.0, not a current one; use up first");
  EXPECT_EQ(message(log, Expected::kLegacy), "x: is a log of version 1.2, not 0.0; use convert or down");
  EXPECT_EQ(message(log, Expected::kShow), "x: is a log, and this command takes shows; give a show");
  for (const Expected expected : {Expected::kAny, Expected::kShow, Expected::kLegacy, Expected::kCurrent}) {
    EXPECT_NE(message("noise", expected), passed);
  }
}

TEST(RequireCorrectText, ReadsTextFormsOnly) {
  const auto message = [](const std::string& text) {
    return zuna_test::MessageOf<Error>([&] { RequireCorrectText(zuna_test::FromText(text), "name"); });
  };
  const std::string passed = "(nothing was thrown)";
  EXPECT_EQ(message("anything"), passed);
  EXPECT_EQ(message(""), passed);
  EXPECT_EQ(message(R"({"kind": "showdata", "fileVersion": "2.0", "showName": "", "songs": []})"), passed);
  EXPECT_THAT(message("{"), testing::MatchesRegex("name: .*\\(line 1, column [0-9]+\\); correct the text"));
  EXPECT_THAT(message("{\"kind\": \"logdata\"}"), EndsWith("; correct the text"));
  EXPECT_EQ(message(zuna_test::WrittenAt(zuna_test::SampleCurrentLog(), {2, 0})), passed);
  EXPECT_THAT(message(R"({"kind": "logdata", "fileVersion": "2.0", "songs")"),
              EndsWith("; correct the text"));
  EXPECT_EQ(message(R"({"kind")"),
            "name: kind: the text ends before its JSON value does (line 1, column 8); correct the text");
  EXPECT_THAT(message(R"({"kind": )"), EndsWith("; correct the text"));
  // Only the value of "kind" tells a log, and no other text that reads the same.
  EXPECT_EQ(message(R"({"kind": "showdata", "fileVersion": "2.0", "showName": "logdata", "songs": []})"),
            passed);
  EXPECT_EQ(message("{\n\"showName\": \"logdata\"}"),
            "name: missing key \"kind\" (line 2, column 22); correct the text");
}

}  // namespace
}  // namespace zuna_toolkit
