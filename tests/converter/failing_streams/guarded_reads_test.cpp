#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "format_converter/file_version.h"
#include "format_converter/showdata.h"
#include "kit/error.h"
#include "tests/support/bytes.h"
#include "tests/support/temporary_folder.h"

namespace {

using zuna_test::Bytes;
using zuna_test::MessageOf;

/// A message of `name` and, directly behind it, the failure's own text, whatever that is.
testing::Matcher<std::string> NameAndFailure(const std::string& name) {
  return testing::AllOf(testing::StartsWith(name), testing::Not(name),
                        testing::Not(testing::StartsWith(name + " ")));
}

std::vector<std::uint8_t> AsData(const std::string& bytes) { return {bytes.begin(), bytes.end()}; }

/// A current show whose header promises a body that is not there.
const std::string kCutCurrentShow = Bytes({0x00, 'Z', 'S', 'H', 99, 0, 0, 0, 1, 2});
/// A legacy show that is cut off in its first song, long enough for a header to be looked for.
const std::string kCutLegacyShow = Bytes({1, 99, 0, 0, 0, 1, '1', 4, 'T', 'u', 'n'});

TEST(GuardedReads, UpNamesTheCipherStream) {
  const zuna_test::TemporaryFolder folder;
  const std::string in = folder.Put("in", kCutLegacyShow);
  EXPECT_THAT(MessageOf<kit::IoError>([&] {
                showdata_up(in, folder / "out", "/no/such/log", {1, 2}, {});
              }),
              NameAndFailure("Problem reading the CipherStream"));
  EXPECT_THAT(folder.Names(), testing::ElementsAre("in"));
}

TEST(GuardedReads, DownAndConverterNameTheIstream) {
  const zuna_test::TemporaryFolder folder;
  const std::string in = folder.Put("in", kCutCurrentShow);
  const auto data = AsData(kCutCurrentShow);
  const auto matches = NameAndFailure("Failed reading istream");
  EXPECT_THAT(MessageOf<kit::IoError>([&] { showdata_down(in, folder / "out", {}); }), matches);
  EXPECT_THAT(MessageOf<kit::IoError>([&] { showdata_down_vector(data, {}, {}); }), matches);
  EXPECT_THAT(MessageOf<kit::IoError>([&] { showdata_converter(in, folder / "out", {1, 2}, {}); }), matches);
  EXPECT_THAT(MessageOf<kit::IoError>([&] { showdata_converter_vector(data, {1, 2}, {}, {}); }), matches);
  EXPECT_THAT(folder.Names(), testing::ElementsAre("in"));
}

TEST(GuardedReads, ProbeNamesTheIstream) {
  const zuna_test::TemporaryFolder folder;
  EXPECT_THAT(MessageOf<kit::IoError>([&] { GetShowdataFileVersion(folder.Put("in", "")); }),
              NameAndFailure("Failed reading istream"));
}

}  // namespace
