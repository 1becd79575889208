#include "tests/format_converter/replaced_calls/replaced_calls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <system_error>

#include "CL/change_log.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/file_version.h"
#include "format_converter/inspection.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "kit/error.h"
#include "tests/format_converter/support/errors.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"

namespace {

using zuna_test::Decrypted;
using zuna_test::Encrypted;
using zuna_test::ExactMessageOf;
using zuna_test::kKey;
using zuna_test::MessageOf;
using zuna_test::SampleCurrentLog;
using zuna_test::SampleLegacyLog;
using zuna_test::SampleLegacyShow;
using zuna_test::Written;
using zuna_test::WrittenAt;

constexpr cmn::FileVersion kLegacy{0, 0};

cmn::FileVersion AlwaysLegacy(std::istream& /*is*/) { return kLegacy; }

TEST(ReplacedProbe, FailureOfTheStreamBecomesAnIoErrorWithItsTextDirectlyBehindTheName) {
  replaced_calls::Calls calls;
  const std::ios_base::failure boom("BOOM");
  calls.probe = [&](std::istream&) -> cmn::FileVersion { throw boom; };
  for (auto* wrapper : {&WrapGetShowdataVersion, &WrapGetLogdataVersion}) {
    std::istringstream is;
    EXPECT_EQ(ExactMessageOf<kit::IoError>([&] { wrapper(is); }),
              std::string("Failed reading istream") + boom.what());
  }
}

TEST(ReplacedProbe, EveryOtherExceptionPasses) {
  replaced_calls::Calls calls;
  std::istringstream is;
  for (auto* wrapper : {&WrapGetShowdataVersion, &WrapGetLogdataVersion}) {
    calls.probe = [](std::istream&) -> cmn::FileVersion { throw std::runtime_error("BOOM"); };
    EXPECT_EQ(ExactMessageOf<std::runtime_error>([&] { wrapper(is); }), "BOOM");
    calls.probe = [](std::istream&) -> cmn::FileVersion {
      throw std::system_error(std::make_error_code(std::errc::io_error));  // a base of the stream's failure
    };
    EXPECT_THAT(ExactMessageOf<std::system_error>([&] { wrapper(is); }),
                testing::Not(testing::HasSubstr("Failed reading")));
    calls.probe = [](std::istream&) -> cmn::FileVersion { throw 7; };
    EXPECT_THROW(wrapper(is), int);
  }
}

TEST(ReplacedProbe, ProbedVersionOfTheDestinationWinsOverTheParsedLogs) {
  replaced_calls::Calls calls;
  calls.probe = [](std::istream&) { return cmn::FileVersion{1, 1}; };
  const CL::ChangeLog log = SampleCurrentLog();
  const auto data = Encrypted(WrittenAt(log, {1, 2}));
  EXPECT_EQ(Decrypted(copy_attaccas_and_fermatas_vector(data, data, kKey.key, kKey.iv)),
            WrittenAt(log, {1, 1}))
      << "the parsed log says 1.2";
}

TEST(ReplacedProbe, IsNotCalledForTheTextForm) {
  replaced_calls::Calls calls;
  calls.probe = [](std::istream&) -> cmn::FileVersion { throw std::runtime_error("probed"); };
  zuna_midi::ShowData show = SampleLegacyShow().get_version_1_0();
  const auto show_data = Encrypted(WrittenAt(show, {2, 0}));
  const auto log_data = Encrypted(WrittenAt(SampleCurrentLog(), {2, 0}));
  const std::vector<std::uint8_t>& key = kKey.key;
  const std::vector<std::uint8_t>& iv = kKey.iv;
  EXPECT_EQ(Decrypted(showdata_down_vector(show_data, key, iv)), Written(SampleLegacyShow()));
  EXPECT_EQ(Decrypted(showdata_converter_vector(show_data, {1, 2}, key, iv)), WrittenAt(show, {1, 2}));
  EXPECT_EQ(Decrypted(logdata_down_vector(log_data, key, iv)), Written(SampleLegacyLog()));
  EXPECT_EQ(Decrypted(logdata_converter_vector(log_data, {1, 2}, key, iv)),
            WrittenAt(SampleCurrentLog(), {1, 2}));
  EXPECT_EQ(Decrypted(copy_attaccas_and_fermatas_vector(log_data, log_data, key, iv)),
            WrittenAt(SampleCurrentLog(), {2, 0}))
      << "the version is the parsed log's";
  const auto probed = [&](const auto& convert) {
    EXPECT_EQ(ExactMessageOf<std::runtime_error>(convert), "probed");
  };
  probed([&] { showdata_down_vector(Encrypted(WrittenAt(show, {1, 2})), key, iv); });
  probed([&] { logdata_down_vector(Encrypted(WrittenAt(SampleCurrentLog(), {1, 2})), key, iv); });
  // The way up probes whatever the first byte: a legacy show of 123 songs begins with "{" too.
  const zuna_test::TemporaryFolder folder;
  const std::string in = folder.Put("in", std::string(show_data.begin(), show_data.end()));
  probed([&] { showdata_up(in, folder / "out", "/no/such/log", {1, 2}, kKey); });
}

TEST(ReplacedProbe, MayMoveTheStream) {
  const zuna_test::TemporaryFolder folder;
  const std::string log = folder.Put("log", Written(SampleLegacyLog()));
  const auto legacy = Encrypted(Written(SampleLegacyShow()));
  const std::string in = folder.Put("in", std::string(legacy.begin(), legacy.end()));
  replaced_calls::Calls calls;
  cmn::FileVersion version;
  calls.probe = [&](std::istream& is) {
    is.ignore(5);
    return version;
  };
  version = kLegacy;
  showdata_up(in, folder / "out", log, {1, 2}, kKey);
  version = {1, 2};
  EXPECT_EQ(showdata_down_vector(zuna_test::FileBytes(folder / "out"), kKey.key, kKey.iv), legacy);
  version = kLegacy;
  const auto legacy_log = Encrypted(Written(SampleLegacyLog()));
  const auto current_log = logdata_up_vector(legacy_log, legacy, {1, 2}, kKey.key, kKey.iv);
  version = {1, 2};
  EXPECT_EQ(logdata_down_vector(current_log, kKey.key, kKey.iv), legacy_log);
}

TEST(ReplacedListdir, ItsOrderIsKept) {
  const zuna_test::TemporaryFolder folder;
  for (const char* name : {"a.showdata", "b.showdata", "c.showdata"}) {
    const auto bytes = Encrypted("any", {});
    folder.Put(name, std::string(bytes.begin(), bytes.end()));
  }
  replaced_calls::Calls calls;
  calls.listdir = [] { return std::vector<std::string>{"b.showdata", "c.showdata", "a.showdata"}; };
  EXPECT_EQ(zuna_test::Print([&] {
              filter_showdata_by_version(folder / "", {1, 0}, {2, 0});
            }).text,
            "Showing files matching 1.0 <= FileVersion < 2.0\n"
            "b.showdata: 1.2\nc.showdata: 1.2\na.showdata: 1.2\n");
}

TEST(ReplacedLookup, OnlyAnUnknownSongIsPassedOver) {
  replaced_calls::Calls calls;
  calls.probe = AlwaysLegacy;
  const auto log = Encrypted(Written(SampleLegacyLog()));
  const auto show = Encrypted(Written(SampleLegacyShow()));
  const auto up = [&] { logdata_up_vector(log, show, {1, 2}, kKey.key, kKey.iv); };
  calls.before_song_log = [] { throw std::out_of_range("no song"); };
  EXPECT_NO_THROW(up());
  calls.before_song_log = [] { throw std::logic_error("BOOM"); };  // the base of std::out_of_range
  EXPECT_EQ(ExactMessageOf<std::logic_error>(up), "BOOM");
  calls.before_song_log = [] { throw std::length_error("BOOM"); };
  EXPECT_EQ(ExactMessageOf<std::length_error>(up), "BOOM");
  calls.before_song_log = [] { throw std::runtime_error("BOOM"); };
  EXPECT_EQ(ExactMessageOf<std::runtime_error>(up), "BOOM");
  calls.before_song_log = [] { throw 7; };
  EXPECT_THROW(up(), int);
}

TEST(ReplacedAccessors, TransposesAndTempoScalesGoDownThroughThemAndTheOthersThroughTheirMembers) {
  replaced_calls::Calls calls;
  calls.accessors_differ = true;
  CL::SongLog log("1", "", 0, 0);
  log.vamps->events.emplace_back(1, 2, "", 3);
  log.repeats->events.emplace_back(1, 2, "", 3);
  log.cuts->events.emplace_back(1, 2, "", 3);
  log.clicks->events.emplace_back(1, 2, "", 3);
  log.transposes->events.emplace_back(1, 2, "", 3);
  log.tempo_scales->events.emplace_back(1, 2, "", 1.5F);
  log.caesuras->events.emplace_back(1, "");
  log.markers->events.emplace_back(1, "", "A");
  const version0::SongLogV0 down(log);
  const auto expect = [](const auto& event, unsigned start, unsigned end, auto value) {
    EXPECT_EQ(event.start, start);
    EXPECT_EQ(event.end, end);
    EXPECT_EQ(event.value, value);
  };
  expect(down.vamps.at(0), 1, 2, 3);
  expect(down.repeats.at(0), 1, 2, 3);
  expect(down.cuts.at(0), 1, 2, 3);
  expect(down.clicks.at(0), 1, 2, 3);
  expect(down.transposes.at(0), 1001, 2002, 8);
  expect(down.tempo_scales.at(0), 1001, 2002, 6.0F);
  EXPECT_EQ(down.caesuras.at(0).time, 3001U);
  EXPECT_EQ(down.score_markers.at(0).time, 1U) << "the marker's own position";
}

#ifdef __linux__  // elsewhere the standard library does not call the test's fclose

class FailedClose : public testing::Test {
 protected:
  std::string PutEncrypted(const std::string& name, const std::string& plaintext) const {
    const auto bytes = Encrypted(plaintext);
    return folder_.Put(name, std::string(bytes.begin(), bytes.end()));
  }

  zuna_test::TemporaryFolder folder_;
  const std::string out_ = folder_ / "out";
};

TEST_F(FailedClose, OfTheLegacyLogPassesUnconverted) {
  const std::string in = PutEncrypted("in", Written(SampleLegacyShow()));
  const std::string log = folder_.Put("log", Written(SampleLegacyLog()));
  replaced_calls::Calls calls;
  calls.probe = AlwaysLegacy;
  calls.close_fails = true;
  EXPECT_EQ(MessageOf<std::ios_base::failure>([&] {
              showdata_up(in, out_, log, {1, 2}, kKey);
            }),
            zuna_test::StreamFailureText());
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(FailedClose, OfTheLegacyShowPassesUnconverted) {
  const std::string in = PutEncrypted("in", Written(SampleLegacyLog()));
  const std::string show = folder_.Put("show", Written(SampleLegacyShow()));
  replaced_calls::Calls calls;
  calls.probe = AlwaysLegacy;
  calls.close_fails = true;
  EXPECT_EQ(MessageOf<std::ios_base::failure>([&] {
              logdata_up(in, out_, show, {1, 2}, kKey);
            }),
            zuna_test::StreamFailureText());
  EXPECT_FALSE(std::filesystem::exists(out_));
}

#endif

}  // namespace
