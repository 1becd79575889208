#include <gtest/gtest.h>

#include <ios>
#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "cmn/data_error.h"
#include "tests/core/log/sample_log.h"
#include "tests/support/failing_streambuf.h"
#include "tests/support/log_equality.h"
#include "tests/support/random_log.h"

namespace {

using zuna_test::FailingStreambuf;
using zuna_test::kLogVersions;
using zuna_test::SampleLogFile;

CL::ChangeLog BigLog() {
  std::mt19937 random(4);
  return zuna_test::RandomLog(random, {10, 2000});
}

TEST(LogStream, ReadsWhatCannotSeek) {
  const CL::ChangeLog log = BigLog();
  for (const cmn::FileVersion& version : kLogVersions) {
    FailingStreambuf::Options options;
    options.seekable = false;
    FailingStreambuf buffer(zuna_test::WriteLog(log, version), options);
    std::istream is(&buffer);
    EXPECT_EQ(zuna_test::FirstDifference(CL::ChangeLog(is), log), "");
    EXPECT_TRUE(is.good());
  }
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
    const CL::ChangeLog log(is);
  } catch (const Failure&) {
    EXPECT_EQ(is.exceptions(), mask);
    return true;
  }
  EXPECT_LT(buffer.calls(), fail_at);
  return false;
}

TEST(LogStream, FailureOfAnyReadOrSeekIsReported) {
  for (const cmn::FileVersion& version : kLogVersions) {
    const std::string bytes = SampleLogFile(version);
    std::size_t failures = 0;
    while (ReadFails<cmn::DataError>(bytes, failures + 1, true, std::ios_base::goodbit)) ++failures;
    EXPECT_GE(failures, version.major == 1 ? 4U : 2U);
  }
}

TEST(LogStream, FailureThrowsWhereTheMaskAsksForIt) {
  for (const cmn::FileVersion& version : kLogVersions) {
    const auto mask = std::ios_base::failbit | std::ios_base::badbit;
    std::size_t failures = 0;
    while (ReadFails<std::ios_base::failure>(SampleLogFile(version), failures + 1, true, mask)) ++failures;
    EXPECT_GE(failures, 1U);
  }
}

TEST(LogStream, StreamThatEndsTooEarlyThrowsWhereTheMaskAsksForIt) {
  for (const cmn::FileVersion& version : {kLogVersions[0], kLogVersions[1]}) {
    const std::string good = SampleLogFile(version);
    for (std::size_t size = 0; size < good.size(); ++size) {
      std::istringstream is(good.substr(0, size));
      is.exceptions(std::ios_base::failbit);
      EXPECT_THROW(CL::ChangeLog log(is), std::ios_base::failure) << size;
    }
  }
}

TEST(LogStream, StreamThatFailedBeforeIsNotRead) {
  std::istringstream is(SampleLogFile({1, 2}));
  is.setstate(std::ios_base::failbit);
  try {
    const CL::ChangeLog log(is);
    FAIL() << "nothing was thrown";
  } catch (const cmn::DataError& error) {
    EXPECT_STREQ(error.what(), "The stream cannot be read; check where the data comes from");
  }
}

/// Calls `write` on a stream that fails from its Nth call on, for every N; how many calls failed.
template <class Write>
std::size_t CountWriteFailures(bool by_exception, const Write& write) {
  for (std::size_t fail_at = 1;; ++fail_at) {
    FailingStreambuf::Options options;
    options.fail_at = fail_at;
    options.by_exception = by_exception;
    FailingStreambuf buffer("", options);
    std::ostream os(&buffer);
    try {
      write(os);
    } catch (const kit::IoError& error) {
      EXPECT_STREQ(error.what(), "The output stream cannot be written; check the free space");
      continue;
    }
    EXPECT_LT(buffer.calls(), fail_at);
    return fail_at - 1;
  }
}

TEST(LogStream, FailureOfAnyWriteIsReported) {
  const CL::ChangeLog log = BigLog();
  for (const cmn::FileVersion& version : kLogVersions) {
    for (const bool by_exception : {false, true}) {
      const auto write = [&](std::ostream& os) { log.WriteBinary(os, version); };
      EXPECT_GT(CountWriteFailures(by_exception, write), 2U);
    }
  }
}

TEST(LogStream, FailureToWriteAnEventIsReported) {
  const CL::Marker marker(0, "", std::string(200000, 'x'));
  for (const cmn::FileVersion& version : kLogVersions) {
    const auto write = [&](std::ostream& os) { marker.WriteBinary(os, version); };
    EXPECT_GT(CountWriteFailures(true, write), 2U);
  }
}

TEST(LogStream, FailureOfAWriteThrowsWhereTheMaskAsksForIt) {
  FailingStreambuf::Options options;
  options.fail_at = 1;
  FailingStreambuf buffer("", options);
  std::ostream os(&buffer);
  os.exceptions(std::ios_base::badbit);
  EXPECT_THROW(zuna_test::SampleLog().WriteBinary(os, {1, 2}), std::ios_base::failure);
  os.clear();
  EXPECT_THROW(CL::Vamp(0, 480, "", 2).WriteBinary(os, {1, 2}), std::ios_base::failure);
}

/// What `write` throws; nothing may have been written then.
template <class Error, class Write>
std::string WriteError(const Write& write) {
  std::ostringstream os;
  try {
    write(os);
  } catch (const Error& error) {
    EXPECT_EQ(os.str(), "");
    return error.what();
  }
  return "";
}

TEST(WriteLog, UnknownVersionIsRefused) {
  const CL::Vamp vamp(0, 480, "", 2);
  const CL::TempoScale scale(0, 480, "", 2);
  const CL::Marker marker(0, "", "A");
  const CL::Caesura caesura(0, "");
  for (const cmn::FileVersion& version : {cmn::FileVersion{0, 0}, {1, 0}, {1, 3}, {2, 1}, {255, 255}}) {
    const std::string number = std::to_string(version.major) + "." + std::to_string(version.minor);
    const std::string expected =
        "Log file version " + number +
        " is not supported for output; the supported versions are 1.1 and 1.2 (binary) and 2.0 (text)";
    const auto error = [&](const auto& written) {
      return WriteError<cmn::UnsupportedVersionError>(
          [&](std::ostream& os) { written.WriteBinary(os, version); });
    };
    EXPECT_EQ(error(zuna_test::SampleLog()), expected);
    EXPECT_EQ(error(vamp), expected);
    EXPECT_EQ(error(scale), expected);
    EXPECT_EQ(error(marker), expected);
    EXPECT_EQ(error(caesura), expected);
  }
}

TEST(WriteLog, ChangedKeyIsRefused) {
  for (const cmn::FileVersion& version : kLogVersions) {
    CL::ChangeLog log = zuna_test::SampleLog();
    log.GetSongLog("2b")->song_number.assign(1, '3');
    EXPECT_EQ(WriteError<std::logic_error>([&](std::ostream& os) { log.WriteBinary(os, version); }),
              "Song \"2b\" cannot be written: its number was changed to \"3\"");
  }
}

/// The error of writing the sample with `change` made to it, which is the same in every version.
template <typename Change>
std::string ChangedError(const Change& change) {
  std::string message;
  for (const cmn::FileVersion& version : kLogVersions) {
    CL::ChangeLog log = zuna_test::SampleLog();
    change(log);
    message = WriteError<std::logic_error>([&](std::ostream& os) { log.WriteBinary(os, version); });
    EXPECT_EQ(message.find("Song \"2b\" cannot be written: "), 0U);
  }
  return message.substr(message.find(": ") + 2);
}

TEST(WriteLog, MissingSongLogIsRefused) {
  EXPECT_EQ(ChangedError([](CL::ChangeLog& log) { log.song_logs()["2b"].reset(); }), "its song log is null");
}

/// The error of writing the sample with this list of its song reset.
template <typename List>
std::string ResetError(List list) {
  return ChangedError([list](CL::ChangeLog& log) {
    const auto copy = std::make_shared<CL::SongLog>(*log.GetSongLog("2b"));
    ((*copy).*list).reset();
    log.AddSongLog(copy);
  });
}

TEST(WriteLog, MissingListIsRefused) {
  EXPECT_EQ(ResetError(&CL::SongLog::vamps), "its list vamps is null");
  EXPECT_EQ(ResetError(&CL::SongLog::repeats), "its list repeats is null");
  EXPECT_EQ(ResetError(&CL::SongLog::cuts), "its list cuts is null");
  EXPECT_EQ(ResetError(&CL::SongLog::transposes), "its list transposes is null");
  EXPECT_EQ(ResetError(&CL::SongLog::tempo_scales), "its list tempoScales is null");
  EXPECT_EQ(ResetError(&CL::SongLog::clicks), "its list clicks is null");
  EXPECT_EQ(ResetError(&CL::SongLog::fermatas), "its list fermatas is null");
  EXPECT_EQ(ResetError(&CL::SongLog::markers), "its list markers is null");
  EXPECT_EQ(ResetError(&CL::SongLog::caesuras), "its list caesuras is null");
}

}  // namespace
