#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

#include "tests/core/show/sample_show.h"
#include "tests/support/show_equality.h"

namespace {

using zuna_test::BinaryFile;
using zuna_test::BodyOf;
using zuna_test::ChangeEveryByte;
using zuna_test::ReadError;
using zuna_test::SampleFile;

constexpr cmn::FileVersion kFixed{1, 0};
constexpr cmn::FileVersion kChecked{1, 1};
constexpr cmn::FileVersion kCompact{1, 2};

bool IsBlank(char c) { return c == ' ' || c == '\n'; }

TEST(DamagedShow, EveryTruncationIsRefused) {
  for (const cmn::FileVersion& version : zuna_test::kVersions) {
    const std::string good = SampleFile(version);
    // The last byte of a text is the end of its last line; the document is whole without it.
    const std::size_t whole = version.major == 2 ? good.size() - 1 : good.size();
    for (std::size_t size = 0; size < whole; ++size) {
      EXPECT_NE(ReadError(good.substr(0, size)), "") << size;
    }
  }
}

TEST(DamagedShow, EveryChangedByteIsFoundWhereThereIsAChecksum) {
  for (const cmn::FileVersion& version : {kChecked, kCompact}) {
    ChangeEveryByte(SampleFile(version), [](const std::string& bad, std::size_t place, int change) {
      ASSERT_NE(ReadError(bad), "") << "byte " << place << " xor " << change;
    });
  }
}

TEST(DamagedShow, EveryChangedByteIsRefusedOrReadAsWhatItSays) {
  for (const cmn::FileVersion& version : {kFixed, cmn::FileVersion{2, 0}}) {
    int read = 0;
    std::string good = SampleFile(version);
    if (version != kFixed) good.erase(std::remove_if(good.begin(), good.end(), IsBlank), good.end());
    ChangeEveryByte(good, [&](const std::string& bad, std::size_t place, int change) {
      if (!ReadError(bad).empty()) return;
      ++read;
      const zuna_midi::ShowData show = zuna_test::ReadShow(bad);
      const std::string again = zuna_test::WriteShow(show, version);
      ASSERT_EQ(zuna_test::FirstDifference(zuna_test::ReadShow(again), show), "")
          << place << " xor " << change;
    });
    EXPECT_GT(read, 0);
  }
}

TEST(DamagedShow, EveryChangedByteOfABodyIsRefusedOrReadAsWhatItSays) {
  ChangeEveryByte(BodyOf(SampleFile(kCompact)), [](const std::string& bad, std::size_t place, int change) {
    const std::string file = BinaryFile(kCompact, bad);
    if (!ReadError(file).empty()) return;
    const zuna_midi::ShowData show = zuna_test::ReadShow(file);
    const std::string again = zuna_test::WriteShow(show, kCompact);
    ASSERT_EQ(zuna_test::FirstDifference(zuna_test::ReadShow(again), show), "") << place << " xor " << change;
  });
}

TEST(DamagedShow, IsToldFromAFileWithWrongFields) {
  for (const cmn::FileVersion& version : {kChecked, kCompact}) {
    std::string bad = SampleFile(version);
    bad[10] = '\x7F';  // the length of the show's name
    EXPECT_EQ(ReadError(bad),
              "The show file is damaged: its checksum is wrong; get an undamaged copy of the file");
  }
}

TEST(DamagedShow, CutOffFileSaysHowMuchIsThere) {
  const std::string good = SampleFile(kFixed);
  EXPECT_EQ(ReadError(good.substr(0, 100)),
            "The show file is cut off: its header states 179 bytes, only 100 are present; "
            "get an undamaged copy of the file");
  EXPECT_EQ(ReadError(good.substr(0, 9)),
            "The show file is cut off: it has 9 bytes and its header needs 10; "
            "get an undamaged copy of the file");
  EXPECT_EQ(ReadError(""),
            "The show file is cut off: it has 0 bytes and its header needs 10; "
            "get an undamaged copy of the file");
}

TEST(DamagedShow, BytesBehindTheEndAreRefused) {
  EXPECT_EQ(ReadError(SampleFile(kCompact) + "x"),
            "The show file has extra bytes after the 95 that its header states; "
            "get an undamaged copy of the file"
            /* 10 - 2 + 87 */);
  EXPECT_NE(ReadError(SampleFile({2, 0}) + "x"), "");
}

TEST(DamagedShow, HeaderThatAnnouncesLessThanItself) {
  EXPECT_EQ(ReadError(zuna_test::Hex("00 5A 53 48  01 00 00 00  01 00")),
            "The show file is damaged: its header states 9 bytes, fewer than any file has; "
            "get an undamaged copy of the file");
  EXPECT_EQ(ReadError(zuna_test::Hex("00 5A 53 48  05 00 00 00  01 01  00 00 00")),
            "The show file is damaged: its header states 13 bytes, fewer than any file has; "
            "get an undamaged copy of the file");
}

TEST(DamagedShow, HeaderThatAnnouncesMoreThanThereIsCostsNoMemory) {
  EXPECT_EQ(ReadError(zuna_test::Hex("00 5A 53 48  FF FF FF FF  01 00")),
            "The show file is cut off: its header states 4294967303 bytes, only 10 are present; "
            "get an undamaged copy of the file");
}

TEST(ForeignFile, IsNoCurrentShow) {
  const std::string no_show =
      "This is not a current show file: it has no header; a legacy show (version 0.0) has to be converted up "
      "first";
  EXPECT_EQ(ReadError("\x01\x03"
                      "abc legacy show"),
            no_show);
  EXPECT_EQ(ReadError("x"), no_show);
  EXPECT_EQ(ReadError(std::string("\0ZXX\0\0\0\0\0\0\0", 11)), no_show);
  EXPECT_EQ(ReadError(zuna_test::Hex("00 5A 4C 47  02 00 00 00  01 02")),
            "This is a current log file, not a show file");
}

TEST(UnsupportedShow, NamesTheSupportedVersions) {
  EXPECT_EQ(ReadError(zuna_test::Hex("00 5A 53 48  02 00 00 00  01 03")),
            "Show file version 1.3 is not supported in binary files; the supported versions are 1.0, 1.1 and "
            "1.2 (binary) and 2.0 (text)");
  EXPECT_EQ(ReadError(zuna_test::Hex("00 5A 53 48  02 00 00 00  02 00")),
            "Show file version 2.0 is not supported in binary files; the supported versions are 1.0, 1.1 and "
            "1.2 (binary) and 2.0 (text)");
  EXPECT_EQ(
      ReadError(R"({"kind": "showdata", "fileVersion": "1.2", )"),
      "Show file version 1.2 is not supported in the text form; the supported versions are 1.0, 1.1 and "
      "1.2 (binary) and 2.0 (text)");
}

}  // namespace
