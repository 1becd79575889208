// Which version the data in a stream has.

#include "cmn/version_probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ios>
#include <istream>
#include <sstream>

#include "cmn/file_format.h"
#include "tests/platform/core/file/kinds.h"
#include "tests/support/bytes.h"
#include "tests/support/failing_streambuf.h"

namespace {

using zuna_test::Hex;
using zuna_test::MessageOf;

/// Behind this text, a standard library may put what it has to say of its own.
const auto kEndsBefore = testing::StartsWith("the data ends before its version or cannot be read");

constexpr cmn::FileVersion kLegacy{0, 0};

cmn::FileVersion ProbeShow(const std::string& bytes) {
  std::istringstream is(bytes);
  return cmn::get_showdata_version(is);
}

cmn::FileVersion ProbeLog(const std::string& bytes) {
  std::istringstream is(bytes);
  return cmn::get_logdata_version(is);
}

cmn::StatedType Stated(const std::string& text) {
  std::istringstream is(text);
  return cmn::StatedInText(is);
}

TEST(StatedInText, FindsKindAndVersionAtTheTopLevel) {
  const cmn::StatedType stated = Stated(
      R"({"songs": [{"kind": "x", "fileVersion": "9.9"}], "fileVersion": "0.0", "kind": "logdata"} and so on)");
  EXPECT_EQ(stated.kind, "logdata");
  EXPECT_EQ(stated.version, "0.0");
}

TEST(StatedInText, FindsNothingElsewhere) {
  for (const char* text : {"", "{", "[]", "{}", R"({"kind": 1, "fileVersion": null})", "TLMN"}) {
    EXPECT_FALSE(Stated(text).kind) << text;
    EXPECT_FALSE(Stated(text).version) << text;
  }
  EXPECT_EQ(Stated(R"({"kind": ")" + std::string(40, 'k') + R"("})").kind, std::string(16, 'k'));
}

TEST(VersionProbe, FindsTheVersionOfEveryShow) {
  for (const cmn::FileVersion& version : zuna_test::Versions<zuna_test::ShowKind>()) {
    EXPECT_EQ(ProbeShow(zuna_test::SampleShowFile(version)), version);
    EXPECT_EQ(ProbeLog(zuna_test::SampleShowFile(version)), kLegacy);
  }
}

TEST(VersionProbe, FindsTheVersionOfALog) {
  const std::string log = Hex("00 5A 4C 47  02 00 00 00  01 0A");
  EXPECT_EQ(ProbeLog(log), (cmn::FileVersion{1, 10}));
  EXPECT_EQ(ProbeShow(log), kLegacy);
  const std::string text = R"({"kind": "logdata", "fileVersion": "2.0", )";
  EXPECT_EQ(ProbeLog(text), (cmn::FileVersion{2, 0}));
  EXPECT_EQ(ProbeShow(text), kLegacy);
}

TEST(VersionProbe, FindsTheVersionOfEveryLogWhereverTheStreamStands) {
  for (const cmn::FileVersion& version : zuna_test::Versions<zuna_test::LogKind>()) {
    const std::string bytes = zuna_test::SampleLogFile(version);
    EXPECT_EQ(ProbeShow(bytes), kLegacy);
    for (const std::size_t position : {std::size_t{0}, std::size_t{8}, bytes.size()}) {
      for (const auto state : {std::ios_base::goodbit, std::ios_base::eofbit, std::ios_base::failbit,
                               std::ios_base::badbit, std::ios_base::eofbit | std::ios_base::failbit}) {
        std::istringstream is(bytes);
        is.seekg(static_cast<std::streamoff>(position));
        is.setstate(state);
        EXPECT_EQ(cmn::get_logdata_version(is), version);
        EXPECT_EQ(is.rdstate(), state);
        is.clear();
        EXPECT_EQ(is.tellg(), static_cast<std::streamoff>(position));
      }
    }
  }
}

TEST(VersionProbe, StreamThatHadFailedKeepsItsStateAndItsMask) {
  for (const auto state : {std::ios_base::failbit, std::ios_base::badbit}) {
    std::istringstream is(zuna_test::SampleLogFile({1, 2}));
    is.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    EXPECT_THROW(is.setstate(state), std::ios_base::failure);
    EXPECT_EQ(cmn::get_logdata_version(is), (cmn::FileVersion{1, 2}));
    EXPECT_EQ(is.rdstate(), state);
    EXPECT_EQ(is.exceptions(), std::ios_base::failbit | std::ios_base::badbit);
    EXPECT_THROW(is.clear(state), std::ios_base::failure);
  }
}

TEST(VersionProbe, SkipsANumberThatTheBufferDivides) {
  const std::string begin = R"({"kind": "showdata", "n": )";
  for (const std::size_t digits : {1U, 2U, 3U, 4U}) {  // of the number, in the first 64 KiB
    const std::string padding(65536 - begin.size() - digits, ' ');
    EXPECT_EQ(ProbeShow(begin + padding + R"(12345, "fileVersion": "2.0"})"), (cmn::FileVersion{2, 0}));
  }
}

TEST(VersionProbe, TakesTheKeysOfALogInAnyOrder) {
  EXPECT_EQ(ProbeLog(R"({"songLogs": [{"kind": "showdata", "tempoScales": [{"value": {"bits": 1}}]}],)"
                     R"( "tagPair": [1, 2], "fileVersion": "2.0", "logLabel": "showdata",)"
                     R"( "identifier": "1.0", "kind": "logdata"})"),
            (cmn::FileVersion{2, 0}));
  EXPECT_EQ(ProbeLog("{\n \"fileVersion\"\t:\r\"2.0\",\"kind\":\"logdata\""), (cmn::FileVersion{2, 0}));
}

TEST(VersionProbe, LegacyLogIsOneThoughItsFirstBytesHaveBeenRead) {
  const std::string log =
      std::string("ZUNA\x1A\0\0\0", 8) + std::string(16, '\x7B') + std::string("\x01l\x01s\0\0\0\0\0\0", 10);
  for (const auto mask : {std::ios_base::goodbit, std::ios_base::failbit | std::ios_base::badbit}) {
    std::istringstream is(log);
    is.exceptions(mask);
    char first[8];
    is.read(first, sizeof first);
    EXPECT_EQ(cmn::get_logdata_version(is), kLegacy);
    EXPECT_TRUE(is.good());
    EXPECT_EQ(is.tellg(), std::streamoff(8));
    EXPECT_EQ(is.exceptions(), mask);
    EXPECT_EQ(is.get(), 0x7B);
  }
}

TEST(VersionProbe, ReportsVersionsThatNobodyReads) {
  EXPECT_EQ(ProbeShow(Hex("00 5A 53 48  02 00 00 00  00 05")), (cmn::FileVersion{0, 5}));
  EXPECT_EQ(ProbeShow(R"({"kind": "showdata", "fileVersion": "255.255"})"), (cmn::FileVersion{255, 255}));
  EXPECT_EQ(ProbeLog(Hex("00 5A 4C 47  02 00 00 00  01 00")), (cmn::FileVersion{1, 0}));
}

TEST(VersionProbe, TakesTheKeysOfATextInAnyOrder) {
  const std::string big(300000, 'x');
  EXPECT_EQ(ProbeShow(R"({"fileVersion": "2.0", "kind": "showdata"})"), (cmn::FileVersion{2, 0}));
  EXPECT_EQ(
      ProbeShow(R"({"songs": [{"kind": "logdata", "fileVersion": "1.0"}], "a": {"b": ")" + big + R"("}, ")" +
                big + R"(": 1.5, "kind": "showdata", "n": [null, true, 18446744073709551615],)" +
                R"( "fileVersion": "2.1"})"),
      (cmn::FileVersion{2, 1}));
}

TEST(VersionProbe, LooksNoFurtherThanNeeded) {
  EXPECT_EQ(ProbeShow(R"({"kind": "showdata", "fileVersion": "2.0" what follows is no JSON)"),
            (cmn::FileVersion{2, 0}));
}

TEST(VersionProbe, TextWithoutAVersionIsLegacy) {
  for (const char* text :
       {R"({"kind": "showdata"}          )", R"({"fileVersion": "2.0"}      )", "{}                  ",
        R"({"kind": "showdata", "fileVersion": 2.0})", R"({"kind": "showdata", "fileVersion": "2"})",
        R"({"kind": "showdata", "fileVersion": "256.0"})", R"({"kind": "showdata", "fileVersion": "02.0"})",
        R"({"kind": "showdataandmore.........", "fileVersion": "2.0"})",
        R"({"kind": ["showdata"], "fileVersion": ["2.0"]})",
        R"({"k": {"kind": "showdata", "fileVersion": "2.0"}})",
        R"({"kind": "showdata", "fileVersion"; "2.0"})"}) {
    EXPECT_EQ(ProbeShow(text), kLegacy) << text;
  }
}

TEST(VersionProbe, LegacyShowOf123SongsIsNoText) {
  EXPECT_EQ(ProbeShow(std::string("{\x01"
                                  "1\x05"
                                  "Intro\xE0\x01 and so on",
                                  21)),
            kLegacy);
  EXPECT_EQ(ProbeShow("{" + std::string(100, '\0')), kLegacy);
}

TEST(VersionProbe, AnythingElseIsLegacy) {
  EXPECT_EQ(ProbeShow("\x02 a legacy show"), kLegacy);
  EXPECT_EQ(ProbeShow(Hex("00 5A 53 49  02 00 00 00  01 00")), kLegacy);
  EXPECT_EQ(ProbeLog(std::string(20, '\0')), kLegacy);
}

TEST(VersionProbe, ShortDataIsLegacyOnAClearMask) {
  for (const cmn::FileVersion& version : zuna_test::Versions<zuna_test::ShowKind>()) {
    for (std::size_t size = 0; size < 10; ++size) {
      const std::string bytes = zuna_test::SampleShowFile(version).substr(0, size);
      EXPECT_EQ(ProbeShow(bytes), kLegacy);
      EXPECT_EQ(ProbeLog(bytes), kLegacy);
    }
  }
}

TEST(VersionProbe, ShortDataThrowsWhereTheMaskAsksForIt) {
  for (const auto mask : {std::ios_base::failbit, std::ios_base::eofbit}) {
    for (std::size_t size = 0; size < 10; ++size) {
      std::istringstream is(zuna_test::SampleShowFile({1, 2}).substr(0, size));
      is.seekg(static_cast<std::streamoff>(size));
      is.exceptions(mask);
      EXPECT_THAT(MessageOf<std::ios_base::failure>([&] { cmn::get_showdata_version(is); }), kEndsBefore);
      EXPECT_THAT(MessageOf<std::ios_base::failure>([&] { cmn::get_logdata_version(is); }), kEndsBefore);
      EXPECT_TRUE(is.good());
      EXPECT_EQ(is.tellg(), std::streamoff(size));
      EXPECT_EQ(is.exceptions(), mask);
    }
  }
}

TEST(VersionProbe, WholeHeaderNeverThrows) {
  for (const cmn::FileVersion& version : zuna_test::Versions<zuna_test::ShowKind>()) {
    std::istringstream is(zuna_test::SampleShowFile(version));
    is.exceptions(std::ios_base::failbit | std::ios_base::badbit | std::ios_base::eofbit);
    EXPECT_EQ(cmn::get_showdata_version(is), version);
    EXPECT_EQ(cmn::get_logdata_version(is), kLegacy);
  }
}

TEST(VersionProbe, LooksAtTheBeginningAndLeavesPositionAndStateAlone) {
  for (const cmn::FileVersion& version : zuna_test::Versions<zuna_test::ShowKind>()) {
    for (const auto state : {std::ios_base::goodbit, std::ios_base::eofbit, std::ios_base::failbit,
                             std::ios_base::badbit, std::ios_base::eofbit | std::ios_base::failbit}) {
      std::istringstream is(zuna_test::SampleShowFile(version));
      is.seekg(8);
      is.setstate(state);
      EXPECT_EQ(cmn::get_showdata_version(is), version);
      EXPECT_EQ(is.rdstate(), state);
      is.clear();
      EXPECT_EQ(is.tellg(), std::streamoff(8));
    }
  }
}

TEST(VersionProbe, LeavesAStreamAtItsEndThere) {
  std::istringstream is("short");
  std::string word;
  is >> word;
  EXPECT_TRUE(is.eof());
  EXPECT_EQ(cmn::get_logdata_version(is), kLegacy);
  EXPECT_EQ(is.rdstate(), std::ios_base::eofbit);
}

/// Probes a stream that fails from its `fail_at`-th call on, and returns how many calls there were.
std::size_t ProbeFailing(const std::string& bytes, std::size_t fail_at, std::ios_base::iostate mask) {
  zuna_test::FailingStreambuf::Options options;
  options.fail_at = fail_at;
  options.by_exception = true;
  zuna_test::FailingStreambuf buffer(bytes, options);
  std::istream is(&buffer);
  is.exceptions(mask);
  try {
    cmn::get_showdata_version(is);
    cmn::get_logdata_version(is);
  } catch (const std::ios_base::failure&) {
    EXPECT_NE(mask, std::ios_base::goodbit);
  }
  EXPECT_TRUE(is.good());
  EXPECT_EQ(is.exceptions(), mask);
  return buffer.calls();
}

TEST(VersionProbe, StreamThatFailsThrowsOnlyWhereTheMaskAsksForIt) {
  for (const std::string& bytes : {zuna_test::SampleShowFile({1, 2}), zuna_test::SampleShowFile({2, 0}),
                                   zuna_test::SampleLogFile({1, 2}), zuna_test::SampleLogFile({2, 0})}) {
    const std::size_t calls = ProbeFailing(bytes, 0, std::ios_base::goodbit);
    for (std::size_t fail_at = 1; fail_at <= calls; ++fail_at) {
      ProbeFailing(bytes, fail_at, std::ios_base::goodbit);
      ProbeFailing(bytes, fail_at, std::ios_base::failbit | std::ios_base::badbit);
    }
  }
}

TEST(VersionProbe, StreamThatCannotSeekIsNotLookedAt) {
  zuna_test::FailingStreambuf::Options options;
  options.seekable = false;
  zuna_test::FailingStreambuf buffer(zuna_test::SampleShowFile({1, 2}), options);
  std::istream is(&buffer);
  EXPECT_EQ(cmn::get_showdata_version(is), kLegacy);
  is.exceptions(std::ios_base::failbit);
  EXPECT_THROW(cmn::get_showdata_version(is), std::ios_base::failure);
  EXPECT_EQ(zuna_midi::ShowData(is).show_name, "Hä");
}

}  // namespace
