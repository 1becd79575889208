#include "toolkit/error.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ios>
#include <new>
#include <stdexcept>
#include <type_traits>

#include "cmn/data_error.h"
#include "kit/file.h"
#include "toolkit/internal/translate.h"
#include "zuna_sec/errors.h"

namespace zuna_toolkit {
namespace {

static_assert(std::is_nothrow_copy_constructible_v<Error>);

TEST(Error, SaysFileProblemAndRemedy) {
  const Error error(ErrorCode::kNoKey, "a.showdata", "needs another key", "give the right key file");
  EXPECT_STREQ(error.what(), "a.showdata: needs another key; give the right key file");
  EXPECT_EQ(error.code(), ErrorCode::kNoKey);
  EXPECT_EQ(error.kind(), ErrorKind::kWrongKey);
  EXPECT_EQ(error.parts().file, "a.showdata");
  EXPECT_EQ(error.parts().problem, "needs another key");
  EXPECT_EQ(error.parts().remedy, "give the right key file");
}

TEST(Error, SaysNothingAboutWhatItLacks) {
  EXPECT_STREQ(Error(ErrorCode::kIo, "", "problem", "").what(), "problem");
}

TEST(Error, GetsItsFileLater) {
  ErrorParts parts;
  parts.problem = "is wrong";
  parts.song = "12a";
  parts.field = "timeline.tempos[3]";
  parts.offset = 40;
  const Error error = Error(ErrorCode::kTextError, parts).WithFile("b");
  EXPECT_EQ(error.code(), ErrorCode::kTextError);
  EXPECT_STREQ(error.what(), "b: is wrong");
  EXPECT_EQ(error.parts().song, "12a");
  EXPECT_EQ(error.parts().field, "timeline.tempos[3]");
  EXPECT_EQ(error.parts().offset, 40U);
}

/// The error that `thrown` becomes where a file called "f" is read.
template <typename Thrown>
Error Translated(const Thrown& thrown) {
  try {
    OnFile("f", [&] { throw thrown; });
  } catch (const Error& error) {
    return error;
  }
  throw std::logic_error("nothing was thrown");
}

TEST(Translation, KeepsThePartsOfADataError) {
  const Error error =
      Translated(cmn::DataError({"12a", "voice 3, messages[7].time", 40, "is too large", "cut it"}));
  EXPECT_EQ(error.parts().file, "f");
  EXPECT_EQ(error.parts().song, "12a");
  EXPECT_EQ(error.parts().field, "voice 3, messages[7].time");
  EXPECT_EQ(error.parts().offset, 40U);
  EXPECT_EQ(error.parts().problem, "is too large");
  EXPECT_EQ(error.parts().remedy, "cut it");
}

TEST(Translation, GivesACodeByTheTypeOfTheError) {
  EXPECT_EQ(Translated(cmn::DataError("no")).code(), ErrorCode::kBadContent);
  EXPECT_EQ(Translated(cmn::UnsupportedVersionError("no")).code(), ErrorCode::kUnsupportedVersion);
  EXPECT_EQ(Translated(zuna_sec::TruncatedError("f", "no", "do")).code(), ErrorCode::kCutOff);
  EXPECT_EQ(Translated(std::ios_base::failure("no")).code(), ErrorCode::kBadContent);
  EXPECT_EQ(Translated(std::runtime_error("no")).code(), ErrorCode::kBadContent);
  EXPECT_EQ(Translated(Error(ErrorCode::kMidiFile, "", "no", "do")).code(), ErrorCode::kMidiFile);
}

TEST(Translation, GivesADataErrorTheCodeOfItsCaller) {
  try {
    OnFile(
        "f", [] { throw cmn::DataError("no"); }, ErrorCode::kTextError);
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kTextError);
  }
}

TEST(Translation, TakesTheErrorOfALargeFileApart) {
  const kit::FileTooLargeError thrown("f", 10);
  const Error error = Translated(thrown);
  EXPECT_STREQ(error.what(), thrown.what());
  EXPECT_EQ(error.code(), ErrorCode::kTooLarge);
  EXPECT_EQ(error.parts().problem, "holds more than 10 bytes");
  EXPECT_EQ(error.parts().remedy, "give another file");
}

TEST(Translation, TakesTheErrorOfAFileApart) {
  const kit::FileIoError thrown("g", "cannot be opened: no such file", "check the path", ENOENT);
  const Error error = Translated(thrown);
  EXPECT_STREQ(error.what(), thrown.what());
  EXPECT_EQ(error.code(), ErrorCode::kNotFound);
  EXPECT_EQ(error.parts().file, "g");
  EXPECT_EQ(error.parts().problem, "cannot be opened: no such file");
  EXPECT_EQ(error.parts().remedy, "check the path");
}

TEST(Translation, KeepsTheWholeMessageOfAnIoError) {
  const Error error = Translated(kit::IoError("f: cannot be read: no such file; check the path"));
  EXPECT_STREQ(error.what(), "f: cannot be read: no such file; check the path");
  EXPECT_EQ(error.code(), ErrorCode::kIo);
  EXPECT_EQ(error.parts().file, "f");
  EXPECT_EQ(error.parts().problem, error.what());
  EXPECT_EQ(error.parts().remedy, "");
}

TEST(Translation, PassesALackOfMemoryOn) {
  EXPECT_THROW(OnFile("f", [] { throw std::bad_alloc(); }), std::bad_alloc);
}

}  // namespace
}  // namespace zuna_toolkit
