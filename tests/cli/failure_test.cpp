#include "cli/terminal/failure.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string>

#include "kit/file.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {
namespace {

using zuna_toolkit::Error;
using zuna_toolkit::Explanation;

template <typename Thrown>
Failure FailureOf(const Thrown& thrown) {
  try {
    throw thrown;
  } catch (...) {
    return CurrentFailure();
  }
}

void ExpectFailure(const Failure& failure, ErrorCode code, ExitCode exit_code, const char* message) {
  EXPECT_EQ(failure.code(), code);
  EXPECT_EQ(failure.exit_code(), exit_code);
  EXPECT_STREQ(failure.what(), message);
}

TEST(Failure, KeepsThePartsOfAnError) {
  zuna_toolkit::ErrorParts parts;
  parts.file = "f";
  parts.problem = "is wrong (offset 40)";
  parts.remedy = "correct it";
  parts.song = "12a";
  parts.field = "name";
  parts.offset = 40;
  const Failure failure = FailureOf(Error(ErrorCode::kBadContent, parts, "another message"));
  ExpectFailure(failure, ErrorCode::kBadContent, ExitCode::kBadInput, "another message");
  EXPECT_EQ(failure.parts().file, "f");
  EXPECT_EQ(failure.parts().problem, "is wrong (offset 40)");
  EXPECT_EQ(failure.parts().remedy, "correct it");
  EXPECT_EQ(failure.parts().song, "12a");
  EXPECT_EQ(failure.parts().field, "name");
  EXPECT_EQ(failure.parts().offset, 40U);
}

TEST(Failure, PassesThroughAsItIs) {
  const Failure failure = FailureOf(Failure(ErrorCode::kOutputExists, "o", "exists", "give --force"));
  ExpectFailure(failure, ErrorCode::kOutputExists, ExitCode::kRefused, "o: exists; give --force");
}

TEST(Failure, SaysWhereTheToolGetsAMissingKey) {
  ExpectFailure(FailureOf(Error(ErrorCode::kNoKey, "f", "is encrypted", "give its key")), ErrorCode::kNoKey,
                ExitCode::kWrongKey, "f: is encrypted; name its key file with --key-file or ZUNA_KEY_FILE");
}

TEST(Failure, IsMadeOfWhatTheOtherLibrariesThrow) {
  ExpectFailure(FailureOf(kit::IoError("f: cannot be read")), ErrorCode::kIo, ExitCode::kIo,
                "f: cannot be read");
  ExpectFailure(FailureOf(kit::FileIoError("f", "cannot be opened: no", "check the path", EACCES)),
                ErrorCode::kNoPermission, ExitCode::kIo, "f: cannot be opened: no; check the path");
  EXPECT_EQ(FailureOf(kit::FileIoError("f", "no", "check", ENOSPC)).parts().file, "f");
  EXPECT_EQ(FailureOf(kit::FileTooLargeError("f", 9)).parts().file, "f");
  ExpectFailure(FailureOf(kit::FileExistsError("f")), ErrorCode::kOutputExists, ExitCode::kRefused,
                "f: has appeared meanwhile; give --force to replace it, or another output");
  ExpectFailure(FailureOf(kit::FileTooLargeError("f", 9)), ErrorCode::kTooLarge, ExitCode::kBadInput,
                "f: holds more than 9 bytes; give another file");
  ExpectFailure(FailureOf(zuna_sec::TooLargeError("f", "is large", "split it")), ErrorCode::kTooLarge,
                ExitCode::kBadInput, "f: is large; split it");
}

TEST(Failure, IsInternalForAnythingElse) {
  ExpectFailure(FailureOf(std::bad_alloc()), ErrorCode::kOutOfMemory, ExitCode::kInternal,
                "out of memory; close other programs or take a smaller file");
  ExpectFailure(FailureOf(std::logic_error("no")), ErrorCode::kInternal, ExitCode::kInternal,
                "internal error: no; please report it");
  ExpectFailure(FailureOf(1), ErrorCode::kInternal, ExitCode::kInternal, "internal error; please report it");
}

TEST(Failure, HasAnExitCodeForEveryKind) {
  const auto exit_code = [](ErrorCode code) { return Failure(code, "", "", "").exit_code(); };
  EXPECT_EQ(exit_code(ErrorCode::kSongNotFound), ExitCode::kNegative);
  EXPECT_EQ(exit_code(ErrorCode::kUsage), ExitCode::kUsage);
  EXPECT_EQ(exit_code(ErrorCode::kNothingMatched), ExitCode::kNothingMatched);
  EXPECT_EQ(exit_code(ErrorCode::kInterrupted), ExitCode::kInterrupted);
  EXPECT_EQ(exit_code(ErrorCode::kClosedPipe), ExitCode::kClosedPipe);
}

/// The table of the page as the code has it.
std::string TableText() {
  std::string text = "| code | exit code | meaning | what to do |\n|---|---|---|---|\n";
  int number = 0;
  for (const Explanation& row : zuna_toolkit::ErrorExplanations()) {
    const auto kind = zuna_toolkit::KindOf(static_cast<ErrorCode>(number++));
    text += "| `" + std::string(row.code) + "` | " + std::to_string(static_cast<int>(ExitCodeOf(kind))) +
            " | " + std::string(row.meaning) + " | " + std::string(row.remedy) + " |\n";
  }
  return text;
}

TEST(ErrorsPage, HasTheTableOfTheCodes) {
  std::ifstream file(ZUNA_ERRORS_PAGE);
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(page.find("\n\n" + TableText() + "\n"), std::string::npos)
      << "docs/errors.md has to contain this table:\n"
      << TableText();
}

}  // namespace
}  // namespace zuna_cli
