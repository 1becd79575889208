#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "cmn/version_probe.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/file_version.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "format_converter/version0/containers/show_data.h"
#include "kit/error.h"
#include "tests/format_converter/failing_streams/plain_cipher.h"
#include "tests/format_converter/support/errors.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"

namespace {

using zuna_test::Bytes;
using zuna_test::MessageOf;

/// A message of `name` and, directly behind it, the failure's own text.
testing::Matcher<std::string> NameAndFailure(const std::string& name) {
  return name + zuna_test::StreamFailureText();
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

/// A current log whose header promises a body that is not there.
const std::string kCutCurrentLog = Bytes({0x00, 'Z', 'L', 'G', 99, 0, 0, 0, 1, 2});
/// A legacy log that states its size rightly, and is cut off in its header.
const std::string kCutLegacyLog = Bytes({'Z', 'U', 'N', 'A', 3, 0, 0, 0, 1, 2, 3});

TEST(GuardedReads, LogdataUpNamesTheLog) {
  const zuna_test::TemporaryFolder folder;
  const std::string in = folder.Put("in", kCutLegacyLog);
  const auto matches = NameAndFailure("Failed reading version0::ChangeLogV0");
  EXPECT_THAT(MessageOf<kit::IoError>([&] {
                logdata_up(in, folder / "out", "/no/such/show", {1, 2}, {});
              }),
              matches);
  EXPECT_THAT(MessageOf<kit::IoError>([&] {
                logdata_up_vector(AsData(kCutLegacyLog), {}, {1, 2}, {}, {});
              }),
              matches);
  EXPECT_THAT(folder.Names(), testing::ElementsAre("in"));
}

TEST(GuardedReads, LogdataUpNamesTheShowOnDiskOnly) {
  const zuna_test::TemporaryFolder folder;
  const std::string log = zuna_test::Written(zuna_test::SampleLegacyLog());
  const std::string in = folder.Put("in", log);
  const std::string show = folder.Put("show", kCutLegacyShow);
  EXPECT_THAT(MessageOf<kit::IoError>([&] {
                logdata_up(in, folder / "out", show, {1, 2}, {});
              }),
              NameAndFailure("Failed reading verison0::ShowData"));
  EXPECT_THROW(logdata_up_vector(AsData(log), AsData(kCutLegacyShow), {1, 2}, {}, {}),
               std::ios_base::failure);
  EXPECT_THAT(folder.Names(), testing::UnorderedElementsAre("in", "show"));
}

TEST(GuardedReads, LogdataDownAndConverterNameTheLog) {
  const zuna_test::TemporaryFolder folder;
  const std::string in = folder.Put("in", kCutCurrentLog);
  const auto data = AsData(kCutCurrentLog);
  const auto down = NameAndFailure("Failed reading CL::ShowData");
  EXPECT_THAT(MessageOf<kit::IoError>([&] { logdata_down(in, folder / "out", {}); }), down);
  EXPECT_THAT(MessageOf<kit::IoError>([&] { logdata_down_vector(data, {}, {}); }), down);
  const auto converter = NameAndFailure("Failed reading CL::ChangeLog");
  EXPECT_THAT(MessageOf<kit::IoError>([&] { logdata_converter(in, folder / "out", {1, 2}, {}); }), converter);
  EXPECT_THAT(MessageOf<kit::IoError>([&] { logdata_converter_vector(data, {1, 2}, {}, {}); }), converter);
  EXPECT_THAT(folder.Names(), testing::ElementsAre("in"));
}

TEST(GuardedReads, CopyingNamesSourceAndDestination) {
  const zuna_test::TemporaryFolder folder;
  const std::string log = zuna_test::WrittenAt(zuna_test::SampleCurrentLog(), {1, 2});
  const std::string good = folder.Put("good", log);
  const std::string cut = folder.Put("cut", kCutCurrentLog);
  EXPECT_THAT(MessageOf<kit::IoError>([&] { copy_attaccas_and_fermatas(cut, good, {}); }),
              NameAndFailure("Failed reading source CL::ChangeLog"));
  EXPECT_THAT(MessageOf<kit::IoError>([&] { copy_attaccas_and_fermatas(good, cut, {}); }),
              NameAndFailure("Failed reading destination CL::ChangeLog"));
  EXPECT_THAT(MessageOf<kit::IoError>(
                  [&] { copy_attaccas_and_fermatas_vector(AsData(log), AsData(kCutCurrentLog), {}, {}); }),
              NameAndFailure("Failed reading destination CL::ChangeLog"));
  EXPECT_EQ(zuna_test::FileBytes(good), AsData(log));
}

constexpr const char* kUnguarded = "the stream's failure itself";

/// The messages of a conversion whose input fails at its 1st, 2nd, ... call.
std::vector<std::string> MessagesOfFailingInputs(const std::function<void()>& convert) {
  std::vector<std::string> messages;
  std::size_t call = 1;
  do {
    plain_cipher::SetFaults({.fail_at = call, .once = true}, {});
    messages.push_back(MessageOf<kit::IoError>([&] {
      try {
        convert();
      } catch (const kit::IoError&) {
        throw;
      } catch (const std::ios_base::failure&) {
        throw kit::IoError(kUnguarded);
      } catch (const std::exception&) {
      }
    }));
  } while (plain_cipher::InputCalls() >= call++);
  plain_cipher::SetFaults({}, {});
  return messages;
}

TEST(GuardedReads, AFailedRewindNamesTheIstream) {
  const auto current = AsData(zuna_test::WrittenAt(zuna_test::SampleCurrentLog(), {2, 0}));
  const auto legacy = AsData(zuna_test::Written(zuna_test::SampleLegacyLog()));
  const auto show = AsData(zuna_test::Written(zuna_test::SampleLegacyShow()));
  const std::function<void()> conversions[] = {
      [&] {
        logdata_up_vector(legacy, show, {1, 2}, {}, {});
      },
      // A text document is not probed: here only the rewind bears this name.
      [&] { logdata_down_vector(current, {}, {}); },
      [&] {
        logdata_converter_vector(current, {1, 2}, {}, {});
      },
      [&] { copy_attaccas_and_fermatas_vector(current, current, {}, {}); }};
  for (const auto& convert : conversions) {
    EXPECT_THAT(MessagesOfFailingInputs(convert),
                testing::Contains(NameAndFailure("Failed reading istream")));
  }
}

TEST(GuardedReads, AFailedRewindOfAShowIsNamedLikeAFailedRead) {
  const zuna_test::TemporaryFolder folder;
  const std::string legacy = folder.Put("legacy", zuna_test::Written(zuna_test::SampleLegacyShow()));
  const auto messages = MessagesOfFailingInputs([&] {
    showdata_up(legacy, folder / "out", "/no/such/log", {1, 2}, {});
  });
  // The probe's failures have a text of their own, so this would be the rewind's.
  const auto named_otherwise = NameAndFailure("Failed reading istream");
  EXPECT_THAT(messages, testing::Each(testing::Not(testing::AnyOf(kUnguarded, named_otherwise))));
  EXPECT_THAT(messages, testing::Contains(NameAndFailure("Problem reading the CipherStream")));
  // A text document is not probed, so the rewind is the only seek.
  const auto text = AsData(zuna_test::WrittenAt(zuna_test::SampleLegacyShow().get_version_1_0(), {2, 0}));
  plain_cipher::SetFaults({.seekable = false}, {});
  EXPECT_EQ(zuna_test::ExactMessageOf<kit::IoError>([&] { showdata_down_vector(text, {}, {}); }),
            "Failed reading istream" + zuna_test::StreamFailureText());
  plain_cipher::SetFaults({}, {});
}

TEST(GuardedReads, ProbeNamesTheIstream) {
  const zuna_test::TemporaryFolder folder;
  std::istringstream empty;
  empty.exceptions(std::ios_base::failbit);
  const std::string text = MessageOf<std::ios_base::failure>([&] { cmn::get_showdata_version(empty); });
  EXPECT_EQ(MessageOf<kit::IoError>([&] { GetShowdataFileVersion(folder.Put("in", "")); }),
            "Failed reading istream" + text);
}

}  // namespace
