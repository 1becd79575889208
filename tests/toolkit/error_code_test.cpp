#include "toolkit/error_code.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <set>
#include <string>

#include "toolkit/checking/finding.h"
#include "zuna_sec/errors.h"

namespace zuna_toolkit {
namespace {

TEST(ErrorCode, IsLowerCaseWordsWithHyphens) {
  for (const Explanation& row : ErrorExplanations()) {
    EXPECT_THAT(std::string(row.code), testing::MatchesRegex("[a-z]+(-[a-z]+)*"));
    EXPECT_FALSE(row.meaning.empty() || row.cause.empty() || row.remedy.empty()) << row.code;
    EXPECT_FALSE(row.meaning.ends_with('.') || row.cause.ends_with('.') || row.remedy.ends_with('.'))
        << row.code;
  }
}

TEST(ErrorCode, MeansNothingElse) {
  std::set<std::string_view> codes;
  for (const auto rows : {ErrorExplanations(), FindingExplanations()}) {
    for (const Explanation& row : rows) EXPECT_TRUE(codes.insert(row.code).second) << row.code;
  }
}

TEST(ErrorCode, HasItsExplanationAtItsNumber) {
  EXPECT_EQ(CodeText(ErrorCode::kWrongKey), "wrong-key");
  EXPECT_EQ(CodeText(ErrorCode::kTextError), "text-error");
  EXPECT_EQ(CodeText(ErrorCode::kClosedPipe), "closed-pipe");
  EXPECT_EQ(ErrorExplanations().size(), static_cast<std::size_t>(ErrorCode::kClosedPipe) + 1);
}

TEST(ErrorCode, HasAKind) {
  EXPECT_EQ(KindOf(ErrorCode::kNoKey), ErrorKind::kWrongKey);
  EXPECT_EQ(KindOf(ErrorCode::kDamaged), ErrorKind::kBadInput);
  EXPECT_EQ(KindOf(ErrorCode::kNoSuchVersion), ErrorKind::kUsage);
  EXPECT_EQ(KindOf(ErrorCode::kNotAFolder), ErrorKind::kIo);
  EXPECT_EQ(KindOf(ErrorCode::kOutOfMemory), ErrorKind::kInternal);
}

TEST(ErrorCode, TellsWhetherRescueMayHelp) {
  for (const ErrorCode code :
       {ErrorCode::kNotEncrypted, ErrorCode::kUnsupportedEnvelope, ErrorCode::kCutOff,
        ErrorCode::kBytesAfterEnd, ErrorCode::kDamaged, ErrorCode::kBadContent, ErrorCode::kTextError,
        ErrorCode::kNotAShowOrLog, ErrorCode::kChangedInTransfer}) {
    EXPECT_TRUE(MayRescueHelp(code)) << CodeText(code);
    const Explanation& row = ErrorExplanations()[static_cast<std::size_t>(code)];
    EXPECT_THAT(std::string(row.commands), testing::HasSubstr("zuna-convert rescue FILE -o OUT"));
  }
  for (const ErrorCode code : {ErrorCode::kWrongKey, ErrorCode::kNothingToSave, ErrorCode::kArchive,
                               ErrorCode::kNotFound, ErrorCode::kEmptyFile}) {
    EXPECT_FALSE(MayRescueHelp(code)) << CodeText(code);
  }
}

template <typename Thrown>
ErrorCode CodeOfThrown() {
  return CodeOf(Thrown("f", "is wrong", "do something"));
}

TEST(ErrorCode, IsKnownForEveryErrorOfTheSecurityLibrary) {
  using namespace zuna_sec;
  EXPECT_EQ(CodeOfThrown<WrongKeyError>(), ErrorCode::kWrongKey);
  EXPECT_EQ(CodeOfThrown<EmptyError>(), ErrorCode::kEmptyFile);
  EXPECT_EQ(CodeOfThrown<NotEncryptedError>(), ErrorCode::kNotEncrypted);
  EXPECT_EQ(CodeOfThrown<ChangedInTransferError>(), ErrorCode::kChangedInTransfer);
  EXPECT_EQ(CodeOfThrown<UnsupportedEnvelopeError>(), ErrorCode::kUnsupportedEnvelope);
  EXPECT_EQ(CodeOfThrown<TruncatedError>(), ErrorCode::kCutOff);
  EXPECT_EQ(CodeOfThrown<TrailingBytesError>(), ErrorCode::kBytesAfterEnd);
  EXPECT_EQ(CodeOfThrown<DamagedError>(), ErrorCode::kDamaged);
  EXPECT_EQ(CodeOfThrown<TooLargeError>(), ErrorCode::kTooLarge);
  EXPECT_EQ(CodeOfThrown<CipherUnavailableError>(), ErrorCode::kCipherUnavailable);
  EXPECT_EQ(CodeOfThrown<CipherError>(), ErrorCode::kDamaged);
}

TEST(ErrorCode, IsKnownForTheReasonsOfTheSystem) {
  for (const int error : {ENOENT, ENOTDIR}) EXPECT_EQ(CodeOfSystemError(error), ErrorCode::kNotFound);
  for (const int error : {EACCES, EPERM, EROFS})
    EXPECT_EQ(CodeOfSystemError(error), ErrorCode::kNoPermission);
  for (const int error : {ENOSPC, EDQUOT, EFBIG}) EXPECT_EQ(CodeOfSystemError(error), ErrorCode::kNoSpace);
  for (const int error : {0, EIO, EMFILE, EISDIR}) EXPECT_EQ(CodeOfSystemError(error), ErrorCode::kIo);
}

}  // namespace
}  // namespace zuna_toolkit
