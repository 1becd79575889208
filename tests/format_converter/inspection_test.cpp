#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "format_converter/errors.h"
#include "format_converter/inspection.h"
#include "kit/error.h"
#include "tests/format_converter/support/errors.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/errors.h"

namespace {

using zuna_test::Encrypted;
using zuna_test::MessageOf;
using zuna_test::Written;
using zuna_test::WrittenAt;

/// What `action` prints to standard output, though it throws. Every line is flushed.
template <typename Action>
std::string Printed(Action action) {
  const zuna_test::PrintedLines printed = zuna_test::Print(action);
  EXPECT_EQ(printed.unflushed_lines, 0) << printed.text;
  return printed.text;
}

zuna_midi::ShowData Show() {
  zuna_midi::ShowData show = zuna_test::SampleLegacyShow().get_version_1_0();
  show.show_name.assign("Opera");
  return show;
}

/// An encrypted file as the listing opens it: with an empty key and IV.
void PutListed(const zuna_test::TemporaryFolder& folder, const std::string& name,
               const std::string& plaintext) {
  const auto bytes = Encrypted(plaintext, {});
  folder.Put(name, std::string(bytes.begin(), bytes.end()));
}

TEST(FilterShowdataByVersion, ListsTheRangeWithoutItsEnd) {
  const zuna_test::TemporaryFolder folder;
  PutListed(folder, "c.showdata", WrittenAt(Show(), {1, 2}));
  PutListed(folder, "b.showdata", WrittenAt(Show(), {1, 1}));
  PutListed(folder, "a.showdata", WrittenAt(Show(), {1, 0}));
  PutListed(folder, "d.showdata", WrittenAt(Show(), {2, 0}));
  PutListed(folder, "e.showdata", Written(zuna_test::SampleLegacyShow()));
  const auto list = [&](cmn::FileVersion lo, cmn::FileVersion hi) {
    return Printed([&] { filter_showdata_by_version(folder / "", lo, hi); });
  };
  EXPECT_EQ(list({1, 0}, {1, 2}),
            "Showing files matching 1.0 <= FileVersion < 1.2\na.showdata: 1.0\nb.showdata: 1.1\n");
  EXPECT_EQ(list({0, 0}, {1, 0}), "Showing files matching 0.0 <= FileVersion < 1.0\ne.showdata: 0.0\n");
  EXPECT_EQ(list({1, 2}, {255, 255}),
            "Showing files matching 1.2 <= FileVersion < 255.255\nc.showdata: 1.2\nd.showdata: 2.0\n");
  EXPECT_EQ(list({1, 9}, {1, 10}), "Showing files matching 1.9 <= FileVersion < 1.10\n");
}

TEST(FilterShowdataByVersion, TakesNamesWithTheExactExtensionOnly) {
  const zuna_test::TemporaryFolder folder;
  for (const char* name :
       {"a.SHOWDATA", "b.showdata.bak", "c.logdata", "showdata", ".showdata", "d.showdata"}) {
    PutListed(folder, name, WrittenAt(Show(), {1, 2}));
  }
  EXPECT_EQ(Printed([&] {
              filter_showdata_by_version(folder / "", {0, 0}, {9, 0});
            }),
            "Showing files matching 0.0 <= FileVersion < 9.0\nd.showdata: 1.2\n");
}

TEST(FilterShowdataByVersion, OpensNoPipesAndDevices) {
  const zuna_test::TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "a.showdata").c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/null", folder / "b.showdata");
  PutListed(folder, "c.showdata", WrittenAt(Show(), {1, 2}));
  EXPECT_EQ(Printed([&] {
              filter_showdata_by_version(folder / "", {0, 0}, {9, 0});
            }),
            "Showing files matching 0.0 <= FileVersion < 9.0\nc.showdata: 1.2\n");
}

TEST(FilterShowdataByVersion, ErrorsPassAndWhatWasPrintedStays) {
  const zuna_test::TemporaryFolder folder;
  PutListed(folder, "a.showdata", WrittenAt(Show(), {1, 2}));
  folder.Put("b.showdata", "not encrypted");
  PutListed(folder, "c.showdata", WrittenAt(Show(), {1, 2}));
  EXPECT_EQ(
      Printed([&] {
        EXPECT_THROW(filter_showdata_by_version(folder / "", {0, 0}, {9, 0}), zuna_sec::NotEncryptedError);
      }),
      "Showing files matching 0.0 <= FileVersion < 9.0\na.showdata: 1.2\n");
  EXPECT_EQ(Printed([&] {
              EXPECT_THROW(filter_showdata_by_version(folder / "none", {0, 0}, {9, 0}), kit::IoError);
            }),
            "Showing files matching 0.0 <= FileVersion < 9.0\n");
}

TEST(PrintProgramChanges, PrintsThemUnderTheirSongAndVoice) {
  zuna_midi::ShowData show = Show();
  auto& piano = *show.songs().at("12a")->voice_data->GetTrack(1);
  piano.messages = {
      {0, {0xC0, 5, 0}}, {480, {0x90, 60, 100}}, {4000000000U, {0xCF, 127, 0}}, {1, {0xB0, 0, 0}}};
  const zuna_test::TemporaryFolder folder;
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}, {2, 0}}) {
    const std::string path = folder.Put("plain.showdata", WrittenAt(show, version));
    EXPECT_EQ(Printed([&] { PrintProgramChanges(path); }),
              "Song 7: Tune:\n"
              "  Piano:\n"
              "Song 12a: Tune:\n"
              "  Piano:\n"
              "    0: Program Change(channel 1, 5)\n"
              "    4000000000: Program Change(channel 16, 127)\n");
  }
}

TEST(PrintProgramChanges, NumbersAreDecimalWhateverTheStreamIsSetTo) {
  const zuna_test::TemporaryFolder folder;
  zuna_midi::ShowData show = Show();
  show.songs().at("7")->voice_data->GetTrack(1)->messages = {{480, {0xC0, 12, 0}}};
  const std::string path = folder.Put("plain.showdata", WrittenAt(show, {1, 2}));
  std::cout << std::hex;
  const std::string text = Printed([&] { PrintProgramChanges(path); });
  std::cout << std::dec;
  EXPECT_THAT(text, testing::HasSubstr("    480: Program Change(channel 1, 12)\n"));
}

TEST(PrintProgramChanges, NamesAFileThatCannotBeOpened) {
  EXPECT_EQ(MessageOf<FormatConverterIOError>([] { PrintProgramChanges("/no/such/show"); }),
            "/no/such/show does not appear to be a valid input file.");
  const zuna_test::TemporaryFolder folder;
  const std::string path = folder.Put("plain", WrittenAt(Show(), {1, 2}));
  EXPECT_EQ(MessageOf<FormatConverterIOError>([&] { PrintProgramChanges(path + std::string("\0x", 2)); }),
            path + "\\0x does not appear to be a valid input file.");
}

TEST(PrintProgramChanges, ErrorsOfTheReaderPass) {
  const zuna_test::TemporaryFolder folder;
  const auto encrypted = Encrypted(WrittenAt(Show(), {1, 2}), {});
  const std::string path = folder.Put("x", std::string(encrypted.begin(), encrypted.end()));
  EXPECT_THROW(PrintProgramChanges(path), kit::RuntimeError);
}

TEST(PrintString, PrintsTheBytesAndALineEnd) {
  EXPECT_EQ(Printed([] { print_string(std::string("a\0\xFFz", 4)); }), std::string("a\0\xFFz\n", 5));
  EXPECT_EQ(Printed([] { print_string(""); }), "\n");
}

TEST(PrintString, AddsNoPaddingToTheBytes) {
  std::cout.width(9);
  EXPECT_EQ(Printed([] { print_string("abc"); }), "abc\n");
  std::cout.width(0);
}

TEST(PrintPos, PrintsTheReadPosition) {
  std::istringstream is("abcdef");
  is.seekg(3);
  EXPECT_EQ(Printed([&] { print_pos(is); }), "3\n");
  EXPECT_EQ(is.tellg(), 3);
  is.setstate(std::ios_base::failbit);
  EXPECT_EQ(Printed([&] { print_pos(is); }), "-1\n");
}

TEST(PrintSongs, PrintsTheNumbersInPlainByteOrder) {
  CL::ChangeLog log;
  log.show_name.assign("Opera");
  EXPECT_EQ(Printed([&] { print_songs(log); }), "Song numbers for Opera: \n");
  for (const char* number : {"2", "10", "1"}) {
    log.AddSongLog(std::make_shared<CL::SongLog>(number, "", std::uint16_t{0}, 0U));
  }
  EXPECT_EQ(Printed([&] { print_songs(log); }), "Song numbers for Opera: \n1\n10\n2\n");
}

TEST(PrintEventsV0, PrintsTheSongLogWithTheGreatestKeyOnly) {
  version0::ChangeLogV0 log = zuna_test::SampleLegacyLog();
  std::ostringstream last;
  log.songs.at("2").write_string_detailed(last, 0);
  EXPECT_EQ(Printed([&] { print_events_v0(log); }), last.str());
  log.songs.clear();
  EXPECT_EQ(Printed([&] { print_events_v0(log); }), "");
}

TEST(PrintEventsV1, PrintsTheSongLogOfTheKey) {
  const CL::ChangeLog log = zuna_test::SampleCurrentLog();
  std::ostringstream text;
  log.GetSongLog("12a")->WriteStringDetailed(text, 0);
  ASSERT_THAT(text.str(), testing::StartsWith("SongLog("));
  EXPECT_EQ(Printed([&] { print_events_v1(log, "12a"); }), text.str());
  EXPECT_THROW(print_events_v1(log, "99"), std::out_of_range);
}

TEST(PrintEventsV1, NamesASongLogThatIsNull) {
  CL::ChangeLog log;
  log.song_logs()["7"] = nullptr;
  EXPECT_EQ(zuna_test::ExactMessageOf<std::logic_error>([&] { print_events_v1(log, "7"); }),
            "A change log without the song log 7 cannot be printed");
}

}  // namespace
