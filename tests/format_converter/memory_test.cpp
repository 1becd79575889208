// Conversions through the real libraries where memory runs out at each allocation in turn, once and for ever.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "format_converter/version0/containers/show_data.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/failing_memory.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"

namespace {

using zuna_test::FileBytes;
using zuna_test::kKey;
using zuna_test::WrittenAt;

/// A legacy show with something in every list, and with texts that do not fit into a string object.
version0::ShowData LegacyShow() {
  version0::SongData song;
  song.song_number = song.timeline.name = "12a";
  song.song_name = "A tune whose name takes memory of its own";
  song.division = 480;
  song.timeline.tempos = {{0, static_cast<float>(0.5 / 480), 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}};
  song.timeline.bars_beats = {{0, "1", 0}};
  song.timeline.keys = {{0, 1, 0}};
  song.timeline.page_nums = {{0, 1}};
  song.tracks = {{1, "Piano"}, {9, "Drum Kit"}};
  song.events = {{1, {{480, 480, 0x90, 60, 100, 1}}}, {9, {{0, 0, 0x90, 36, 100, 9}}}};
  version0::ShowData show;
  show.songs["12a"] = song;
  return show;
}

std::string Log() {
  return "ZUNA" + zuna_test::Bytes({67, 0, 0, 0}) + std::string(16, '\7') + zuna_test::Bytes({0, 36}) +
         "An opera whose name takes some space" + zuna_test::Bytes({1, 0, 2, 0});
}

class FailingMemory : public testing::Test {
 protected:
  static void SetUpTestSuite() { failing_memory::Install(); }

  FailingMemory() {
    zuna_midi::ShowData show = LegacyShow().get_version_1_0();
    show.show_name = "An opera whose name takes some space";
    folder_.Put("log", Log());
    PutEncrypted("legacy", zuna_test::Written(LegacyShow()));
    PutEncrypted("binary", WrittenAt(show, {1, 2}));
    PutEncrypted("text", WrittenAt(show, {2, 0}));
    folder_.Put("show", zuna_test::Written(zuna_test::SampleLegacyShow()));
    PutEncrypted("legacy log", zuna_test::Written(zuna_test::SampleLegacyLog()));
    PutEncrypted("binary log", WrittenAt(zuna_test::SampleCurrentLog(), {1, 2}));
    PutEncrypted("text log", WrittenAt(zuna_test::SampleCurrentLog(), {2, 0}));
  }

  void PutEncrypted(const std::string& name, const std::string& plaintext) const {
    const auto bytes = zuna_test::Encrypted(plaintext);
    folder_.Put(name, std::string(bytes.begin(), bytes.end()));
  }

  /// Runs `convert`, which writes out_, with the 1st, 2nd, ... allocation failing, until it needs no more.
  void ExpectCleanFailures(const std::function<void()>& convert) {
    convert();  // what is allocated once for all
    const auto expected = FileBytes(out_);
    for (const bool for_ever : {false, true}) {
      long call = 1;
      while (FailsAt(call, for_ever, convert)) {
        ASSERT_LT(++call, 10000) << "does not end";
      }
      EXPECT_GT(call, 50) << "hardly anything was tested";
      EXPECT_EQ(FileBytes(out_), expected);
    }
  }

  const zuna_test::TemporaryFolder folder_;
  const std::string out_ = folder_ / "an output whose path does not fit into a string object";

 private:
  /// Whether the `call`th allocation was made, and failed.
  bool FailsAt(long call, bool for_ever, const std::function<void()>& convert) const {
    SCOPED_TRACE(testing::Message() << "allocation " << call << (for_ever ? " and later" : ""));
    const std::vector<std::uint8_t> old = {'o', 'l', 'd'};
    folder_.Put("an output whose path does not fit into a string object", "old");
    const long live = failing_memory::Live();
    bool thrown = false;
    failing_memory::FailAt(call, for_ever);
    try {
      convert();
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
    const bool failed = failing_memory::Stop();
    EXPECT_EQ(failing_memory::Live(), live) << "leaks";
    EXPECT_EQ(thrown, failed);
    EXPECT_EQ(FileBytes(out_) == old, thrown) << "an output and an error, or neither";
    EXPECT_EQ(folder_.Names().size(), 9U) << "a temporary file was left";
    return failed;
  }
};

TEST_F(FailingMemory, Up) {
  const std::string in = folder_ / "legacy";
  const std::string log = folder_ / "log";
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 2}, {2, 0}}) {
    ExpectCleanFailures([&] { showdata_up(in, out_, log, version, kKey); });
  }
}

TEST_F(FailingMemory, Down) {
  for (const std::string& in : {folder_ / "binary", folder_ / "text"}) {
    ExpectCleanFailures([&] { showdata_down(in, out_, kKey); });
  }
}

TEST_F(FailingMemory, Converter) {
  for (const std::string& in : {folder_ / "binary", folder_ / "text"}) {
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 2}, {2, 0}}) {
      ExpectCleanFailures([&] { showdata_converter(in, out_, version, kKey); });
    }
  }
}

TEST_F(FailingMemory, LogdataUp) {
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 2}, {2, 0}}) {
    ExpectCleanFailures([&] { logdata_up(folder_ / "legacy log", out_, folder_ / "show", version, kKey); });
  }
}

TEST_F(FailingMemory, LogdataDown) {
  for (const std::string& in : {folder_ / "binary log", folder_ / "text log"}) {
    ExpectCleanFailures([&] { logdata_down(in, out_, kKey); });
  }
}

TEST_F(FailingMemory, LogdataConverter) {
  for (const std::string& in : {folder_ / "binary log", folder_ / "text log"}) {
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 2}, {2, 0}}) {
      ExpectCleanFailures([&] { logdata_converter(in, out_, version, kKey); });
    }
  }
}

}  // namespace
