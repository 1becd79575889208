#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

#include "tests/core/log/sample_log.h"
#include "tests/support/log_equality.h"

namespace {

using zuna_test::BinaryLogFile;
using zuna_test::BodyOf;
using zuna_test::ChangeEveryByte;
using zuna_test::Hex;
using zuna_test::LogReadError;
using zuna_test::SampleLogFile;

constexpr cmn::FileVersion kFixed{1, 1};
constexpr cmn::FileVersion kCompact{1, 2};
constexpr cmn::FileVersion kText{2, 0};

bool IsBlank(char c) { return c == ' ' || c == '\n'; }

/// What is read is written as something that reads back the same.
void ExpectReadsBack(const std::string& file, cmn::FileVersion version) {
  const CL::ChangeLog log = zuna_test::ReadLog(file);
  const std::string again = zuna_test::WriteLog(log, version);
  ASSERT_EQ(zuna_test::FirstDifference(zuna_test::ReadLog(again), log), "");
}

TEST(DamagedLog, EveryTruncationIsRefused) {
  for (const cmn::FileVersion& version : zuna_test::kLogVersions) {
    const std::string good = SampleLogFile(version);
    // The last byte of a text is the end of its last line; the document is whole without it.
    const std::size_t whole = version == kText ? good.size() - 1 : good.size();
    for (std::size_t size = 0; size < whole; ++size) {
      EXPECT_NE(LogReadError(good.substr(0, size)), "") << size;
    }
  }
}

TEST(DamagedLog, EveryChangedByteIsFoundByTheChecksum) {
  for (const cmn::FileVersion& version : {kFixed, kCompact}) {
    ChangeEveryByte(SampleLogFile(version), [](const std::string& bad, std::size_t place, int change) {
      ASSERT_NE(LogReadError(bad), "") << "byte " << place << " xor " << change;
    });
  }
}

TEST(DamagedLog, EveryChangedByteOfATextIsRefusedOrReadAsWhatItSays) {
  int read = 0;
  std::string good = SampleLogFile(kText);
  good.erase(std::remove_if(good.begin(), good.end(), IsBlank), good.end());
  ChangeEveryByte(good, [&](const std::string& bad, std::size_t place, int change) {
    if (!LogReadError(bad).empty()) return;
    ++read;
    SCOPED_TRACE(std::to_string(place) + " xor " + std::to_string(change));
    ExpectReadsBack(bad, kText);
  });
  EXPECT_GT(read, 0);
}

TEST(DamagedLog, EveryChangedByteOfABodyIsRefusedOrReadAsWhatItSays) {
  for (const cmn::FileVersion& version : {kFixed, kCompact}) {
    int read = 0;
    ChangeEveryByte(BodyOf(SampleLogFile(version)),
                    [&](const std::string& bad, std::size_t place, int change) {
                      const std::string file = BinaryLogFile(version, bad);
                      if (!LogReadError(file).empty()) return;
                      ++read;
                      SCOPED_TRACE(std::to_string(place) + " xor " + std::to_string(change));
                      ExpectReadsBack(file, version);
                    });
    EXPECT_GT(read, 0);
  }
}

TEST(DamagedLog, IsToldFromAFileWithWrongFields) {
  for (const cmn::FileVersion& version : {kFixed, kCompact}) {
    std::string bad = SampleLogFile(version);
    bad[10] = '\x7F';  // the length of the show's name
    EXPECT_EQ(LogReadError(bad),
              "The log file is damaged: its checksum is wrong; get an undamaged copy of the file");
  }
}

TEST(DamagedLog, CutOffFileSaysHowMuchIsThere) {
  const std::string good = SampleLogFile(kCompact);
  EXPECT_EQ(LogReadError(good.substr(0, 100)),
            "The log file is cut off: its header states 146 bytes, only 100 are present; "
            "get an undamaged copy of the file");
  EXPECT_EQ(LogReadError(good.substr(0, 9)),
            "The log file is cut off: it has 9 bytes and its header needs 10; "
            "get an undamaged copy of the file");
  EXPECT_EQ(LogReadError(""),
            "The log file is cut off: it has 0 bytes and its header needs 10; "
            "get an undamaged copy of the file");
}

TEST(DamagedLog, BytesBehindTheEndAreRefused) {
  EXPECT_EQ(LogReadError(SampleLogFile(kCompact) + "x"),
            "The log file has extra bytes after the 146 that its header states; "
            "get an undamaged copy of the file");
  EXPECT_NE(LogReadError(SampleLogFile(kText) + "x"), "");
}

TEST(DamagedLog, HeaderThatAnnouncesMoreThanThereIsCostsNoMemory) {
  EXPECT_EQ(LogReadError(Hex("00 5A 4C 47  FF FF FF FF  01 02")),
            "The log file is cut off: its header states 4294967303 bytes, only 10 are present; "
            "get an undamaged copy of the file");
}

TEST(DamagedLog, HeaderThatAnnouncesLessThanItself) {
  EXPECT_EQ(LogReadError(Hex("00 5A 4C 47  05 00 00 00  01 01  00 00 00")),
            "The log file is damaged: its header states 13 bytes, fewer than any file has; "
            "get an undamaged copy of the file");
}

TEST(ForeignFile, IsNoCurrentLog) {
  const std::string no_log =
      "This is not a current log file: it has no header; a legacy log (version 0.0) has to be converted up "
      "first";
  EXPECT_EQ(LogReadError("\x14\x01\x01\x01 a legacy log"), no_log);
  EXPECT_EQ(LogReadError("x"), no_log);
  EXPECT_EQ(LogReadError(Hex("00 5A 53 48  02 00 00 00  01 02")),
            "This is a current show file, not a log file");
}

TEST(UnsupportedLog, NamesTheSupportedVersions) {
  const std::string supported = "; the supported versions are 1.1 and 1.2 (binary) and 2.0 (text)";
  EXPECT_EQ(LogReadError(Hex("00 5A 4C 47  02 00 00 00  01 00")),
            "Log file version 1.0 is not supported in binary files" + supported);
  EXPECT_EQ(LogReadError(Hex("00 5A 4C 47  02 00 00 00  01 03")),
            "Log file version 1.3 is not supported in binary files" + supported);
  EXPECT_EQ(LogReadError(Hex("00 5A 4C 47  02 00 00 00  02 00")),
            "Log file version 2.0 is not supported in binary files" + supported);
  EXPECT_EQ(LogReadError(R"({"kind": "logdata", "fileVersion": "1.1", )"),
            "Log file version 1.1 is not supported in the text form" + supported);
}

}  // namespace
