// Reads, writes and compares a song of a legacy show: docs/format-0.md, "song_data".

#include "format_converter/version0/containers/song_data.h"

#include <iostream>

#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/primitives/internal/primitives.h"
#include "format_converter/version0/records/internal/event_map.h"

namespace version0 {

namespace {

std::vector<TrackObject> read_tracks(std::istream& is) {
  const unsigned count = get_u8(is);
  std::vector<TrackObject> tracks;
  for (unsigned i = 0; i < count; ++i) tracks.emplace_back(is);
  return tracks;
}

void write_tracks(std::ostream& os, const std::vector<TrackObject>& tracks) {
  put_u8(os, static_cast<std::uint8_t>(tracks.size()));
  for (const TrackObject& track : tracks) track.write_binary(os);
}

void compare_tracks(const std::vector<TrackObject>& a, const std::vector<TrackObject>& b) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (i == b.size()) throw Version0Error("tracks did not compare equal");
    static_cast<void>(a[i] == b[i]);
  }
}

void print_events(const std::vector<EventObject>& events) {
  for (const EventObject& event : events) std::cout << event << std::endl;
}

void compare_events(const std::vector<EventObject>& a, const std::vector<EventObject>& b) {
  try {
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (i == b.size()) throw Version0Error("events did not compare equal");
      static_cast<void>(a[i] == b[i]);
    }
  } catch (const Version0Error&) {
    print_events(a);
    print_events(b);
    throw;
  }
}

void compare_events(const EventMap& a, const EventMap& b) {
  auto other = b.begin();
  for (const auto& [id, events] : a) {
    if (other == b.end()) throw Version0Error("events did not compare equal");
    compare_events(events, other->second);
    ++other;
  }
}

}  // namespace

SongData::SongData(std::istream& is) {
  get_u32(is);  // the record length, which is not used
  song_number = get_string(is);
  song_name = get_string(is);
  division = get_u16(is);
  song_length = get_u32(is);
  tracks = read_tracks(is);
  events = read_events(is);
  timeline = Timeline(is);
}

void SongData::write_binary(std::ostream& os) const {
  const LengthField record_length(os);
  put_string(os, song_number);
  put_string(os, song_name);
  put_u16(os, division);
  put_u32(os, song_length);
  write_tracks(os, tracks);
  write_events(os, events);
  record_length.patch(os);  // the timeline is not counted
  timeline.write_binary(os);
}

bool operator==(const SongData& a, const SongData& b) {
  if (a.song_number != b.song_number) throw Version0Error("song_number failed");
  if (a.song_name != b.song_name) throw Version0Error("song_name failed");
  if (a.division != b.division) throw Version0Error("division failed");
  if (a.song_length != b.song_length) throw Version0Error("song_length failed");
  compare_tracks(a.tracks, b.tracks);
  if (a.timeline != b.timeline) throw Version0Error("timeline failed");
  compare_events(a.events, b.events);
  return true;
}

bool operator!=(const SongData& a, const SongData& b) { return !(a == b); }

}  // namespace version0
