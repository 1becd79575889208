#include <iostream>
#include <memory>

#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/change_log_header.h"
#include "format_converter/version0/containers/show_data.h"
#include "format_converter/version0/conversions/timeline_conversion.h"
#include "format_converter/version0/conversions/track_ids.h"
#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/primitives/stream_position.h"
#include "tests/faults/in_process/calls.h"
#include "tests/support/legacy_samples.h"
#include "zuna_midi/show_data.h"

namespace public_calls {

namespace {

using zuna_test::Written;

const std::string kLong = "a text that does not fit into a string object";

std::string T(std::int64_t number) { return std::to_string(number) + " "; }

template <typename Value>
std::string Text(const Value& value) {
  return TextOf([&](std::ostream& os) { value.write_binary(os); });
}

/// What every type of the legacy format has.
template <typename Value>
void AddBinary(Calls& calls, const std::string& name, const Value& value) {
  calls.AddWriter(name + "::write_binary", [value](std::ostream& os) { value.write_binary(os); });
  calls.AddReader(name + "(istream)", Written(value), [](std::istream& is) { return Text(Value(is)); });
}

template <typename Value>
void AddCompared(Calls& calls, const std::string& name, const Value& value) {
  AddBinary(calls, name, value);
  const auto other = std::make_shared<Value>(value);
  calls.Add(name + ", compared", [value, other] { return T(value == *other) + T(value != *other); });
}

template <typename Value>
void AddOrdered(Calls& calls, const std::string& name, const Value& value) {
  AddCompared(calls, name, value);
  const auto other = std::make_shared<Value>(value);
  calls.Add(name + ", ordered", [value, other] { return T(value < *other); });
}

template <typename Value>
void AddWithText(Calls& calls, const std::string& name, const Value& value) {
  calls.AddWriter(name + "::write_string", [value](std::ostream& os) { value.write_string(os); });
}

void AddRecords(Calls& calls) {
  const version0::RTempo tempo(0, 0.001F, 8, 8, 120);
  AddOrdered(calls, "RTempo", tempo);
  AddOrdered(calls, "RBarsBeats", version0::RBarsBeats(0, "12a", 0));
  AddOrdered(calls, "RKey", version0::RKey(0, 1, 0));
  AddOrdered(calls, "RMeter", version0::RMeter(0, 4, 4));
  AddOrdered(calls, "RPageNum", version0::RPageNum(0, 1));
  AddOrdered(calls, "XCaesura", version0::XCaesura(960));
  AddOrdered(calls, "XScoreMarker", version0::XScoreMarker(960, kLong));
  AddWithText(calls, "RMeter", version0::RMeter(0, 4, 4));
  AddWithText(calls, "XCaesura", version0::XCaesura(960));
  AddWithText(calls, "XScoreMarker", version0::XScoreMarker(960, kLong));
  AddBinary(calls, "CutV0", version0::CutV0(0, 480, 1));
  AddBinary(calls, "VampV0", version0::VampV0(0, 480, 1));
  AddBinary(calls, "RepeatV0", version0::RepeatV0(0, 480, 1));
  AddBinary(calls, "ClickV0", version0::ClickV0(0, 480, 1));
  AddBinary(calls, "TempoScaleV0", version0::TempoScaleV0(0, 480, 1.5F));
  AddBinary(calls, "TransposeV0", version0::TransposeV0(0, 480, 1));
  AddOrdered(calls, "TrackObject", version0::TrackObject(1, kLong));
  calls.Add("RTempo", [tempo] {
    const TL::Meter meter{0, 4, 4, 24, 8};
    return T(tempo.clocks_per_click()) + T(tempo.microseconds(480)) +
           T(version0::need_new_meter(meter, tempo)) + T(version0::need_new_tempo(tempo, meter)) +
           T(static_cast<std::int64_t>(version0::get_non_drum_ids().size()));
  });
  const version0::EventObject event(480, 480, 0x90, 60, 100, 1);
  calls.AddWriter("EventObject, <<", [event](std::ostream& os) { os << event; });
  calls.AddReader("EventObject(istream)", TextOf([&](std::ostream& os) { os << event; }),
                  [](std::istream& is) { return T(version0::EventObject(is).abs_time); });
  const version0::EventObject same = event;
  calls.Add("EventObject", [event, same] { return T(event == same) + T(event != same) + T(event < same); });
}

version0::SongData Song() {
  version0::SongData song = zuna_test::SampleLegacySong("12a", 480);
  song.song_name = kLong;
  song.tracks.emplace_back(std::uint8_t{9}, "Drum Kit");
  song.events[9] = {{0, 0, 0x90, 36, 100, 9}};
  song.timeline.bars_beats = {{0, "1", 0}};
  song.timeline.keys = {{0, 1, 0}};
  song.timeline.page_nums = {{0, 1}};
  return song;
}

void AddShows(Calls& calls) {
  const version0::SongData song = Song();
  version0::ShowData show = zuna_test::SampleLegacyShow();
  show.songs["12a"] = song;
  AddCompared(calls, "SongData", song);
  AddCompared(calls, "ShowData", show);
  AddCompared(calls, "Timeline", song.timeline);
  const zuna_midi::ShowData current = show.get_version_1_0();
  const auto current_song = song.get_version_1_0();
  calls.Add("ShowData, down", [current] { return Text(version0::ShowData(current)); });
  calls.Add("SongData, down", [current_song] { return Text(version0::SongData(*current_song)); });
  calls.Add("Timeline, down",
            [current_song] { return Text(version0::Timeline(*current_song->timeline, kLong, 7680, 480)); });
  calls.Add("ShowData, up", [show] {
    return TextOf([&](std::ostream& os) { show.get_version_1_0().WriteBinary(os, {2, 0}); });
  });
  calls.Add("SongData, up", [song] { return song.get_version_1_0()->song_name; });
  calls.Add("Timeline, up",
            [song] { return std::string(song.timeline.get_version_1_0(480)->bars_beats[0].bar_number()); });
}

void AddLogs(Calls& calls) {
  const version0::ChangeLogV0 log = zuna_test::SampleLegacyLog();
  const version0::SongLogV0 song = log.songs.at("12a");
  AddCompared(calls, "ChangeLogV0", log);
  AddCompared(calls, "SongLogV0", song);
  AddWithText(calls, "SongLogV0", song);
  calls.AddWriter("SongLogV0::write_string_detailed",
                  [song](std::ostream& os) { song.write_string_detailed(os, 2); });
  calls.AddReader("ChangeLogHeader", Written(log),
                  [](std::istream& is) { return version0::ChangeLogHeader(is).show_name; });
  calls.AddReader("get_show_name", Written(log),
                  [](std::istream& is) { return version0::get_show_name(is); });
  const CL::ChangeLog current = log.get_version_1_0();
  const auto current_song = song.get_version_1_0();
  calls.Add("ChangeLogV0, down", [current] { return Text(version0::ChangeLogV0(current)); });
  calls.Add("SongLogV0, down", [current_song] { return Text(version0::SongLogV0(*current_song)); });
  calls.Add("ChangeLogV0, up", [log] {
    return TextOf([&](std::ostream& os) { log.get_version_1_0().WriteBinary(os, {2, 0}); });
  });
  calls.Add("SongLogV0, up", [song] { return song.get_version_1_0()->song_name; });
}

}  // namespace

Calls OfVersion0() {
  Calls calls;
  calls.AddReader("print_istream_pos", kLong,
                  [](std::istream& is) { return version0::print_istream_pos(is), std::string(); });
  calls.Add("ostream_tellp", [] {
    std::ostringstream os;
    return T(version0::ostream_tellp(os));
  });
  AddRecords(calls);
  AddShows(calls);
  AddLogs(calls);
  calls.Add("errors", [] {
    return std::string(version0::Version0Error(kLong).what()) + version0::IDError(kLong).what() +
           version0::EventCodeError(kLong).what() + version0::TrackCountError(kLong).what();
  });
  return calls;
}

}  // namespace public_calls
