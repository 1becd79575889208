// What the shared library promises to its callers, taken from the shared library itself: every entry point
// with its signature, and every legacy class with its constructors, operators and constants.

#include <gtest/gtest.h>

#include <sstream>

#include "CL/change_log.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/inspection.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/change_log_header.h"
#include "format_converter/version0/containers/show_data.h"
#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/primitives/stream_position.h"
#include "tests/support/bytes.h"
#include "tests/support/legacy_samples.h"
#include "zuna_midi/show_data.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Path = std::string;
using Version = cmn::FileVersion;

/// Only compiles where `function` has exactly this type, and only links where it is exported.
template <typename Function>
void ExpectEntryPoint(Function* function) {
  EXPECT_NE(reinterpret_cast<const void*>(function), nullptr);
}

TEST(ExportedInterface, VersionProbing) {
  ExpectEntryPoint<Version(std::istream&)>(WrapGetShowdataVersion);
  ExpectEntryPoint<Version(std::istream&)>(WrapGetLogdataVersion);
  ExpectEntryPoint<Version(const Path&)>(GetShowdataFileVersion);
  ExpectEntryPoint<void(const Path&)>(print_file_version);
}

TEST(ExportedInterface, ShowFiles) {
  ExpectEntryPoint<Path(const Path&, const Path&, const Path&, const Version&, const CipherKey&)>(
      showdata_up);
  ExpectEntryPoint<Path(const Path&, const Path&, const CipherKey&)>(showdata_down);
  ExpectEntryPoint<Bytes(const Bytes&, const Bytes&, const Bytes&)>(showdata_down_vector);
  ExpectEntryPoint<Path(const Path&, const Path&, const Version&, const CipherKey&)>(showdata_converter);
  ExpectEntryPoint<Bytes(const Bytes&, const Version&, const Bytes&, const Bytes&)>(
      showdata_converter_vector);
}

TEST(ExportedInterface, LogFiles) {
  ExpectEntryPoint<Path(const Path&, const Path&, const Path&, const Version&, const CipherKey&)>(logdata_up);
  ExpectEntryPoint<Bytes(const Bytes&, const Bytes&, const Version&, const Bytes&, const Bytes&)>(
      logdata_up_vector);
  ExpectEntryPoint<Path(const Path&, const Path&, const CipherKey&)>(logdata_down);
  ExpectEntryPoint<Bytes(const Bytes&, const Bytes&, const Bytes&)>(logdata_down_vector);
  ExpectEntryPoint<Path(const Path&, const Path&, const Version&, const CipherKey&)>(logdata_converter);
  ExpectEntryPoint<Bytes(const Bytes&, const Version&, const Bytes&, const Bytes&)>(logdata_converter_vector);
  ExpectEntryPoint<bool(zuna_sec::TwoFishCipherStream&)>(check_log_size);
  ExpectEntryPoint<void(const Path&, const Path&, const CipherKey&)>(copy_attaccas_and_fermatas);
  ExpectEntryPoint<Bytes(const Bytes&, const Bytes&, const Bytes&, const Bytes&)>(
      copy_attaccas_and_fermatas_vector);
}

TEST(ExportedInterface, Inspection) {
  ExpectEntryPoint<void(const Path&, const Version&, const Version&)>(filter_showdata_by_version);
  ExpectEntryPoint<void(const Path&)>(PrintProgramChanges);
  ExpectEntryPoint<void(const CL::ChangeLog&)>(print_songs);
  ExpectEntryPoint<void(const version0::ChangeLogV0&)>(print_events_v0);
  ExpectEntryPoint<void(const CL::ChangeLog&, const char*)>(print_events_v1);
  ExpectEntryPoint<void(const std::string&)>(print_string);
  ExpectEntryPoint<void(std::istream&)>(print_pos);
  ExpectEntryPoint<void(std::istream&)>(version0::print_istream_pos);
  ExpectEntryPoint<std::uint32_t(std::ostream&)>(version0::ostream_tellp);
}

/// A record of a list: its constant, and itself through its writer and its reader.
template <typename Record>
Record Reread(const Record& record, std::uint8_t code) {
  const std::uint8_t* const exported = &Record::eventCode;
  EXPECT_EQ(*exported, code);
  return zuna_test::Read<Record>(zuna_test::Written(record));
}

template <typename Record>
void ExpectRecord(const Record& record, const Record& later, std::uint8_t code) {
  const Record back = Reread(record, code);
  EXPECT_TRUE(back == record);
  EXPECT_FALSE(back != record);
  EXPECT_TRUE(record < later);
}

TEST(ExportedInterface, Records) {
  const version0::RTempo tempo(0, 0.001F, 8, 8, 120);
  ExpectRecord(tempo, version0::RTempo(1, 0.001F, 8, 8, 120), 'F');
  EXPECT_EQ(tempo.clocks_per_click(), 24);
  EXPECT_EQ(tempo.microseconds(480), 480000);
  ExpectRecord(version0::RBarsBeats(0, "1", 0), version0::RBarsBeats(1, "1", 0), 'G');
  ExpectRecord(version0::RKey(0, -1, 1), version0::RKey(1, -1, 1), 'H');
  ExpectRecord(version0::RPageNum(0, 1), version0::RPageNum(1, 1), 'I');
  ExpectRecord(version0::RMeter(0, 3, 4), version0::RMeter(1, 3, 4), 'J');
  ExpectRecord(version0::XScoreMarker(0, "A"), version0::XScoreMarker(1, "A"), 'E');
  ExpectRecord(version0::XCaesura(0), version0::XCaesura(1), 'N');
  std::ostringstream text;
  version0::XCaesura(1).write_string(
      version0::XScoreMarker(2, "A").write_string(version0::RMeter(0, 3, 4).write_string(text)));
  EXPECT_EQ(text.str(), "RMeter(0, 3, 4)XScoreMarker(2, A)XCaesura(1)");
}

TEST(ExportedInterface, PairedEvents) {
  EXPECT_EQ(Reread(version0::VampV0(1, 2, -3), '@').value, -3);
  EXPECT_EQ(Reread(version0::RepeatV0(1, 2, 3), 'A').start, 1U);
  EXPECT_EQ(Reread(version0::CutV0(1, 2, 3), 'B').end, 2U);
  EXPECT_EQ(Reread(version0::TransposeV0(1, 2, 3), 'C').value, 3);
  EXPECT_EQ(Reread(version0::TempoScaleV0(1, 2, 1.5F), 'D').value, 1.5F);
  EXPECT_EQ(Reread(version0::ClickV0(1, 2, 3), 'L').event_code, 'L');
}

TEST(ExportedInterface, ShowContainers) {
  const version0::ShowData show = zuna_test::SampleLegacyShow();
  const auto back = zuna_test::Read<version0::ShowData>(zuna_test::Written(show));
  EXPECT_TRUE(back == show);
  EXPECT_FALSE(back != show);
  EXPECT_TRUE(version0::ShowData(show.get_version_1_0()) == show);
  const version0::SongData& song = show.songs.at("12a");
  EXPECT_FALSE(zuna_test::Read<version0::SongData>(zuna_test::Written(song)) != song);
  EXPECT_TRUE(version0::SongData(*song.get_version_1_0()) == song);
  EXPECT_FALSE(zuna_test::Read<version0::Timeline>(zuna_test::Written(song.timeline)) != song.timeline);
  EXPECT_TRUE(version0::Timeline(*song.timeline.get_version_1_0(480), "12a", 0, 480) == song.timeline);
  EXPECT_FALSE(zuna_test::Read<version0::TrackObject>(zuna_test::Written(song.tracks[0])) != song.tracks[0]);
  const version0::EventObject event = song.events.at(1).at(0);
  EXPECT_TRUE(event == song.events.at(1).at(0));
  EXPECT_FALSE(event != song.events.at(1).at(0));
}

TEST(ExportedInterface, LogContainers) {
  const version0::ChangeLogV0 log = zuna_test::SampleLegacyLog();
  std::istringstream bytes(zuna_test::Written(log));
  EXPECT_EQ(version0::get_show_name(bytes), "Opera");
  const auto back = zuna_test::Read<version0::ChangeLogV0>(bytes.str());
  EXPECT_TRUE(back == log);
  EXPECT_FALSE(back != log);
  EXPECT_TRUE(version0::ChangeLogV0(log.get_version_1_0()) == log);
  const version0::SongLogV0& song = log.songs.at("12a");
  EXPECT_FALSE(zuna_test::Read<version0::SongLogV0>(zuna_test::Written(song)) != song);
  EXPECT_TRUE(version0::SongLogV0(*song.get_version_1_0()) == song);
}

TEST(ExportedInterface, ErrorsAreCaughtAcrossTheBoundary) {
  EXPECT_THROW(zuna_test::Read<version0::ChangeLogV0>("XXXX"), version0::IDError);
  EXPECT_THROW(zuna_test::Read<version0::CutV0>("X"), version0::EventCodeError);
  EXPECT_THROW(PrintProgramChanges("/no/such/show"), FormatConverterIOError);
  EXPECT_THROW(throw FormatConverterError("caught as its base"), std::logic_error);
  EXPECT_THROW(throw version0::TrackCountError("caught as its base"), version0::Version0Error);
}

}  // namespace
