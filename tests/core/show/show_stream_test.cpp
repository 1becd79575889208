#include <gtest/gtest.h>

#include <ios>
#include <istream>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "cmn/data_error.h"
#include "platform/core/file/frame.h"
#include "tests/core/show/sample_show.h"
#include "tests/support/failing_streambuf.h"
#include "tests/support/random_show.h"
#include "tests/support/show_equality.h"

namespace {

using zuna_test::FailingStreambuf;
using zuna_test::kVersions;
using zuna_test::SampleFile;

zuna_midi::ShowData BigShow() {
  std::mt19937 random(4);
  zuna_test::ShowOptions options;
  options.max_messages = 60000;
  return zuna_test::RandomShow(random, options);
}

TEST(ShowStream, ReadsWhatCannotSeek) {
  const zuna_midi::ShowData show = BigShow();
  for (const cmn::FileVersion& version : kVersions) {
    FailingStreambuf::Options options;
    options.seekable = false;
    FailingStreambuf buffer(zuna_test::WriteShow(show, version), options);
    std::istream is(&buffer);
    EXPECT_EQ(zuna_test::FirstDifference(zuna_midi::ShowData(is), show), "");
    EXPECT_TRUE(is.good());
  }
}

TEST(ShowStream, WhatCannotSeekIsCheckedForItsSizeToo) {
  FailingStreambuf::Options options;
  options.seekable = false;
  const auto error = [&](const std::string& bytes) -> std::string {
    FailingStreambuf buffer(bytes, options);
    std::istream is(&buffer);
    try {
      const zuna_midi::ShowData show(is);
    } catch (const cmn::DataError& failure) {
      return failure.what();
    }
    return "";
  };
  EXPECT_EQ(error(SampleFile({1, 0}) + "x"),
            "The show file has extra bytes after the 179 that its header states; "
            "get an undamaged copy of the file");
  EXPECT_EQ(error(SampleFile({1, 0}).substr(0, 60)),
            "The show file is cut off: its header states 179 bytes, only 60 are present; "
            "get an undamaged copy of the file");
  EXPECT_EQ(error(zuna_test::Hex("00 5A 53 48  FF FF FF FF  01 02")),
            "The show file is cut off: its header states 4294967303 bytes, only 10 are present; "
            "get an undamaged copy of the file");
}

/// Reads from a stream that fails from its `fail_at`-th call on; false once nothing failed.
template <class Failure>
bool ReadFails(const std::string& bytes, std::size_t fail_at, bool by_exception,
               std::ios_base::iostate mask) {
  FailingStreambuf::Options options;
  options.fail_at = fail_at;
  options.by_exception = by_exception;
  FailingStreambuf buffer(bytes, options);
  std::istream is(&buffer);
  is.exceptions(mask);
  try {
    const zuna_midi::ShowData show(is);
  } catch (const Failure&) {
    EXPECT_EQ(is.exceptions(), mask);
    return true;
  }
  EXPECT_LT(buffer.calls(), fail_at);
  return false;
}

TEST(ShowStream, FailureOfAnyReadOrSeekIsReported) {
  for (const cmn::FileVersion& version : {kVersions[0], kVersions[2]}) {
    const std::string bytes = SampleFile(version);
    std::size_t failures = 0;
    while (ReadFails<cmn::DataError>(bytes, failures + 1, true, std::ios_base::goodbit)) ++failures;
    EXPECT_GE(failures, 4U);
  }
}

TEST(ShowStream, FailureThrowsWhereTheMaskAsksForIt) {
  for (const cmn::FileVersion& version : kVersions) {
    const auto mask = std::ios_base::failbit | std::ios_base::badbit;
    std::size_t failures = 0;
    while (ReadFails<std::ios_base::failure>(SampleFile(version), failures + 1, true, mask)) ++failures;
    EXPECT_GE(failures, 1U);
  }
}

TEST(ShowStream, StreamThatEndsTooEarlyThrowsWhereTheMaskAsksForIt) {
  for (const cmn::FileVersion& version : {kVersions[0], kVersions[1], kVersions[2]}) {
    const std::string good = SampleFile(version);
    for (std::size_t size = 0; size < good.size(); ++size) {
      std::istringstream is(good.substr(0, size));
      is.exceptions(std::ios_base::failbit);
      EXPECT_THROW(zuna_midi::ShowData show(is), std::ios_base::failure) << size;
    }
  }
}

TEST(ShowStream, StreamThatFailedBeforeIsNotRead) {
  std::istringstream is(SampleFile({1, 2}));
  is.setstate(std::ios_base::failbit);
  try {
    const zuna_midi::ShowData show(is);
    FAIL() << "nothing was thrown";
  } catch (const cmn::DataError& error) {
    EXPECT_STREQ(error.what(), "The stream cannot be read; check where the data comes from");
  }
}

TEST(ShowStream, FailureOfAnyWriteIsReported) {
  const zuna_midi::ShowData show = BigShow();
  for (const cmn::FileVersion& version : kVersions) {
    for (const bool by_exception : {false, true}) {
      std::size_t fail_at = 1;
      for (;; ++fail_at) {
        FailingStreambuf::Options options;
        options.fail_at = fail_at;
        options.by_exception = by_exception;
        FailingStreambuf buffer("", options);
        std::ostream os(&buffer);
        try {
          show.WriteBinary(os, version);
        } catch (const kit::IoError& error) {
          EXPECT_STREQ(error.what(), "The output stream cannot be written; check the free space");
          continue;
        }
        EXPECT_LT(buffer.calls(), fail_at);
        break;
      }
      EXPECT_GT(fail_at, 2U);
    }
  }
}

TEST(ShowStream, FailureOfAWriteThrowsWhereTheMaskAsksForIt) {
  FailingStreambuf::Options options;
  options.fail_at = 1;
  FailingStreambuf buffer("", options);
  std::ostream os(&buffer);
  os.exceptions(std::ios_base::badbit);
  EXPECT_THROW(zuna_test::SampleShow().WriteBinary(os, {1, 2}), std::ios_base::failure);
}

/// What writing a show throws; nothing may have been written then.
template <class Error>
std::string WriteError(const zuna_midi::ShowData& show, cmn::FileVersion version) {
  std::ostringstream os;
  try {
    show.WriteBinary(os, version);
  } catch (const Error& error) {
    EXPECT_EQ(os.str(), "");
    return error.what();
  }
  return "";
}

TEST(WriteShow, UnknownVersionIsRefused) {
  for (const cmn::FileVersion& version : {cmn::FileVersion{0, 0}, {0, 9}, {1, 3}, {2, 1}, {255, 255}}) {
    const std::string number = std::to_string(version.major) + "." + std::to_string(version.minor);
    EXPECT_EQ(
        WriteError<cmn::UnsupportedVersionError>(zuna_test::SampleShow(), version),
        "Show file version " + number +
            " is not supported for output; the supported versions are 1.0, 1.1 and 1.2 (binary) and 2.0 "
            "(text)");
  }
}

TEST(WriteShow, UnfinishedSongIsRefused) {
  for (const cmn::FileVersion& version : kVersions) {
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

TEST(BinaryDocument, HoldsLessThanFourGibibytes) {
  using zuna_core::FileKind;
  using zuna_core::FrameHeader;
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max() - 2;
  EXPECT_EQ(FrameHeader(FileKind::kShow, {1, 0}, kLargest),
            zuna_test::Hex("00 5A 53 48  FF FF FF FF  01 00"));
  EXPECT_EQ(FrameHeader(FileKind::kLog, {1, 1}, kLargest - 4),
            zuna_test::Hex("00 5A 4C 47  FF FF FF FF  01 01"));
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
