// Files on streams that cannot seek, that fail, and that have an exception mask; what cannot be written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ios>
#include <istream>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "platform/core/file/frame.h"
#include "tests/platform/core/file/kinds.h"
#include "tests/support/failing_streambuf.h"
#include "tests/support/sanitized.h"

namespace {

using zuna_test::FailingStreambuf;
using zuna_test::Hex;
using zuna_test::Versions;

template <typename Kind>
class FileStream : public testing::Test {
 protected:
  using Model = typename Kind::Model;

  /// Reads from a stream that fails from its `fail_at`-th call on; false once nothing failed.
  template <typename Failure>
  static bool ReadFails(const std::string& bytes, std::size_t fail_at, std::ios_base::iostate mask) {
    FailingStreambuf::Options options;
    options.fail_at = fail_at;
    options.by_exception = true;
    FailingStreambuf buffer(bytes, options);
    std::istream is(&buffer);
    is.exceptions(mask);
    try {
      const Model model(is);
    } catch (const Failure&) {
      EXPECT_EQ(is.exceptions(), mask);
      return true;
    }
    EXPECT_LT(buffer.calls(), fail_at);
    return false;
  }

  template <typename Failure>
  static std::size_t CountReadFailures(const std::string& bytes, std::ios_base::iostate mask) {
    std::size_t failures = 0;
    while (ReadFails<Failure>(bytes, failures + 1, mask)) ++failures;
    return failures;
  }
};

using Kinds = testing::Types<zuna_test::ShowKind, zuna_test::LogKind>;
TYPED_TEST_SUITE(FileStream, Kinds);

TYPED_TEST(FileStream, ReadsWhatCannotSeek) {
  const auto model = TypeParam::Big();
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    FailingStreambuf::Options options;
    options.seekable = false;
    FailingStreambuf buffer(zuna_test::Write(model, version), options);
    std::istream is(&buffer);
    EXPECT_EQ(zuna_test::FirstDifference(typename TypeParam::Model(is), model), "");
    EXPECT_TRUE(is.good());
  }
}

TYPED_TEST(FileStream, WhatCannotSeekIsCheckedForItsSizeToo) {
  const auto error = [](const std::string& bytes) -> std::string {
    FailingStreambuf::Options options;
    options.seekable = false;
    FailingStreambuf buffer(bytes, options);
    std::istream is(&buffer);
    try {
      const typename TypeParam::Model model(is);
    } catch (const cmn::DataError& failure) {
      return failure.what();
    }
    return "";
  };
  const std::string good = TypeParam::SampleFile({1, 1});
  const std::string size = std::to_string(good.size());
  const std::string name = "The " + std::string(cmn::KindName(TypeParam::kKind)) + " file ";
  const std::string remedy = "; get a complete copy of the file";
  EXPECT_EQ(error(good + "x"), name + "has extra bytes after the " + size +
                                   " that its header states (at byte " + size +
                                   "); get another copy of the file");
  EXPECT_THAT(error(good.substr(0, 60)),
              testing::EndsWith(name + "is cut off: its header states " + size +
                                " bytes, only 60 are present (at byte 60)" + remedy));
  EXPECT_EQ(error(std::string(cmn::BinaryMagic(TypeParam::kKind)) + Hex("FFFFFFFF 0102")),
            "showName: " + name +
                "is cut off: its header states 4294967303 bytes, only 10 are present (at byte 10)" + remedy);
}

TYPED_TEST(FileStream, FailureOfAnyReadOrSeekIsReported) {
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    const std::size_t failures = this->template CountReadFailures<cmn::DataError>(
        TypeParam::SampleFile(version), std::ios_base::goodbit);
    EXPECT_GE(failures, version.major == 1 ? 4U : 2U);
  }
}

TYPED_TEST(FileStream, FailureThrowsWhereTheMaskAsksForIt) {
  const auto mask = std::ios_base::failbit | std::ios_base::badbit;
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    const std::size_t failures =
        this->template CountReadFailures<std::ios_base::failure>(TypeParam::SampleFile(version), mask);
    EXPECT_GE(failures, 1U);
  }
}

TYPED_TEST(FileStream, StreamThatEndsTooEarlyThrowsWhereTheMaskAsksForIt) {
  for (const cmn::FileVersion& version : zuna_test::BinaryVersions<TypeParam>()) {
    const std::string good = TypeParam::SampleFile(version);
    for (std::size_t size = 0; size < good.size(); ++size) {
      std::istringstream is(good.substr(0, size));
      is.exceptions(std::ios_base::failbit);
      EXPECT_THROW(typename TypeParam::Model model(is), std::ios_base::failure) << size;
    }
  }
}

TYPED_TEST(FileStream, StreamThatFailedBeforeIsNotRead) {
  std::istringstream is(TypeParam::SampleFile({1, 2}));
  is.setstate(std::ios_base::failbit);
  try {
    const typename TypeParam::Model model(is);
    FAIL() << "nothing was thrown";
  } catch (const cmn::DataError& error) {
    EXPECT_STREQ(error.what(), "The stream cannot be read; check where the data comes from");
  }
}

/// Calls `write` on a stream that fails from its Nth call on, for N = 1, 2, ...; how many writes failed.
template <typename WriteIt>
std::size_t CountWriteFailures(bool by_exception, const WriteIt& write) {
  std::size_t failed = 0;
  for (std::size_t fail_at = 1;; fail_at = zuna_test::NextCall(fail_at)) {
    FailingStreambuf::Options options;
    options.fail_at = fail_at;
    options.by_exception = by_exception;
    FailingStreambuf buffer("", options);
    std::ostream os(&buffer);
    try {
      write(os);
    } catch (const kit::IoError& error) {
      EXPECT_STREQ(error.what(), "The output stream cannot be written; check the free space");
      ++failed;
      continue;
    }
    EXPECT_LT(buffer.calls(), fail_at);
    return failed;
  }
}

TYPED_TEST(FileStream, FailureOfAnyWriteIsReported) {
  const auto model = TypeParam::Big();
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    for (const bool by_exception : {false, true}) {
      const auto write = [&](std::ostream& os) { model.WriteBinary(os, version); };
      EXPECT_GT(CountWriteFailures(by_exception, write), 2U);
    }
  }
}

TEST(EventStream, FailureToWriteAnEventIsReported) {
  const CL::Marker marker(0, "", std::string(200000, 'x'));
  for (const cmn::FileVersion& version : Versions<zuna_test::LogKind>()) {
    const auto write = [&](std::ostream& os) { marker.WriteBinary(os, version); };
    EXPECT_GT(CountWriteFailures(true, write), 2U);
  }
}

/// Writes on a stream that fails at once and whose mask asks for an exception.
template <typename WriteIt>
void ExpectMaskedFailure(const WriteIt& write) {
  FailingStreambuf::Options options;
  options.fail_at = 1;
  FailingStreambuf buffer("", options);
  std::ostream os(&buffer);
  os.exceptions(std::ios_base::badbit);
  EXPECT_THROW(write(os), std::ios_base::failure);
}

TYPED_TEST(FileStream, FailureOfAWriteThrowsWhereTheMaskAsksForIt) {
  ExpectMaskedFailure([](std::ostream& os) { TypeParam::Sample().WriteBinary(os, {1, 2}); });
}

TEST(EventStream, FailureOfAWriteThrowsWhereTheMaskAsksForIt) {
  ExpectMaskedFailure([](std::ostream& os) { CL::Vamp(0, 480, "", 2).WriteBinary(os, {1, 2}); });
}

/// What writing throws; nothing may have been written then.
template <typename Error, typename Written>
std::string WriteError(const Written& written, cmn::FileVersion version) {
  std::ostringstream os;
  try {
    written.WriteBinary(os, version);
  } catch (const Error& error) {
    EXPECT_EQ(os.str(), "");
    return error.what();
  }
  return "";
}

TEST(WriteShow, UnknownVersionIsRefused) {
  for (const cmn::FileVersion& version : {cmn::FileVersion{0, 0}, {0, 9}, {1, 3}, {2, 1}, {255, 255}}) {
    EXPECT_EQ(
        WriteError<cmn::UnsupportedVersionError>(zuna_test::SampleShow(), version),
        "Show file version " + cmn::VersionText(version) +
            " is not supported for output; the supported versions are 1.0, 1.1 and 1.2 (binary) and 2.0 "
            "(text)");
  }
}

TEST(WriteLog, UnknownVersionIsRefused) {
  for (const cmn::FileVersion& version : {cmn::FileVersion{0, 0}, {1, 0}, {1, 3}, {2, 1}, {255, 255}}) {
    const std::string expected =
        "Log file version " + cmn::VersionText(version) +
        " is not supported for output; the supported versions are 1.1 and 1.2 (binary) and 2.0 (text)";
    const auto error = [&](const auto& written) {
      return WriteError<cmn::UnsupportedVersionError>(written, version);
    };
    EXPECT_EQ(error(zuna_test::SampleLog()), expected);
    EXPECT_EQ(error(CL::Vamp(0, 480, "", 2)), expected);
    EXPECT_EQ(error(CL::TempoScale(0, 480, "", 2)), expected);
    EXPECT_EQ(error(CL::Marker(0, "", "A")), expected);
    EXPECT_EQ(error(CL::Caesura(0, "")), expected);
  }
}

TEST(WriteShow, UnfinishedSongIsRefused) {
  for (const cmn::FileVersion& version : Versions<zuna_test::ShowKind>()) {
    zuna_midi::ShowData show = zuna_test::SampleShow();
    zuna_midi::SongData& song = *show.songs().begin()->second;
    const auto voices = std::move(song.voice_data);
    EXPECT_EQ(WriteError<std::logic_error>(show, version),
              "Song \"2b\" cannot be written: it has no voice data");
    song.voice_data = voices;
    song.timeline.reset();
    EXPECT_EQ(WriteError<std::logic_error>(show, version),
              "Song \"2b\" cannot be written: it has no timeline");
  }
}

TEST(WriteShow, ChangedKeyIsRefused) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  zuna_midi::SongData& song = *show.songs().begin()->second;
  song.voice_data->GetTrack(300)->track_number = 2;
  EXPECT_EQ(WriteError<std::logic_error>(show, {1, 2}),
            "Song \"2b\" cannot be written: the number of its voice 300 was changed to 2");
  song.song_number.assign(1, '3');
  EXPECT_EQ(WriteError<std::logic_error>(show, {1, 2}),
            "Song \"2b\" cannot be written: its number was changed to \"3\"");
}

/// The error of writing the sample with `change` made to it, which is the same in every version.
template <typename Change>
std::string ChangedLogError(const Change& change) {
  std::string message;
  for (const cmn::FileVersion& version : Versions<zuna_test::LogKind>()) {
    CL::ChangeLog log = zuna_test::SampleLog();
    change(log);
    const std::string error = WriteError<std::logic_error>(log, version);
    EXPECT_TRUE(message.empty() || message == error) << error;
    message = error;
  }
  return message;
}

TEST(WriteLog, ChangedKeyIsRefused) {
  EXPECT_EQ(ChangedLogError([](CL::ChangeLog& log) { log.GetSongLog("2b")->song_number.assign(1, '3'); }),
            "Song \"2b\" cannot be written: its number was changed to \"3\"");
}

TEST(WriteLog, MissingSongLogIsRefused) {
  EXPECT_EQ(ChangedLogError([](CL::ChangeLog& log) { log.song_logs()["2b"].reset(); }),
            "Song \"2b\" cannot be written: its song log is null");
}

/// The error of writing the sample without this list of its song.
template <typename List>
std::string MissingListError(List list) {
  return ChangedLogError([list](CL::ChangeLog& log) { ((*log.GetSongLog("2b")).*list).reset(); });
}

TEST(WriteLog, MissingListIsRefused) {
  const std::string refused = "Song \"2b\" cannot be written: its list ";
  EXPECT_EQ(MissingListError(&CL::SongLog::vamps), refused + "vamps is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::repeats), refused + "repeats is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::cuts), refused + "cuts is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::transposes), refused + "transposes is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::tempo_scales), refused + "tempoScales is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::clicks), refused + "clicks is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::fermatas), refused + "fermatas is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::markers), refused + "markers is null");
  EXPECT_EQ(MissingListError(&CL::SongLog::caesuras), refused + "caesuras is null");
}

TEST(WriteLog, FirstOfSeveralMissingListsIsNamed) {
  EXPECT_EQ(ChangedLogError([](CL::ChangeLog& log) {
              log.GetSongLog("2b")->markers.reset();
              log.GetSongLog("2b")->repeats.reset();
            }),
            "Song \"2b\" cannot be written: its list repeats is null");
}

TEST(Frame, HoldsLessThanFourGibibytes) {
  using cmn::FileKind;
  using zuna_core::FrameHeader;
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max() - 2;
  EXPECT_EQ(FrameHeader(FileKind::kShow, {1, 0}, kLargest), Hex("00 5A 53 48  FF FF FF FF  01 00"));
  EXPECT_EQ(FrameHeader(FileKind::kLog, {1, 1}, kLargest - 4), Hex("00 5A 4C 47  FF FF FF FF  01 01"));
  EXPECT_THROW(FrameHeader(FileKind::kShow, {1, 1}, kLargest), std::length_error);
  try {
    FrameHeader(FileKind::kShow, {1, 0}, kLargest + 1);
    FAIL() << "nothing was thrown";
  } catch (const std::length_error& error) {
    EXPECT_STREQ(error.what(),
                 "The show needs 4294967296 bytes; a binary file holds less than 4 GiB, "
                 "so write it as text (version 2.0)");
  }
}

}  // namespace
