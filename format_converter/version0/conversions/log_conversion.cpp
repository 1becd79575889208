// A legacy change log to the current model and back: the log, its song logs and their edits.
// docs/conversion.md lists the rules.

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "CL/change_log.h"
#include "format_converter/version0/containers/change_log.h"

namespace version0 {

namespace {

template <typename Legacy, typename Current>
void events_up(const std::vector<Legacy>& from, std::vector<Current>& to) {
  to.reserve(from.size());
  for (const Legacy& event : from) to.emplace_back(event.start, event.end, std::string(), event.value);
}

void events_up(const std::vector<XCaesura>& from, std::vector<CL::Caesura>& to) {
  to.reserve(from.size());
  for (const XCaesura& event : from) to.emplace_back(event.time, std::string());
}

void events_up(const std::vector<XScoreMarker>& from, std::vector<CL::Marker>& to) {
  to.reserve(from.size());
  for (const XScoreMarker& event : from) to.emplace_back(event.time, std::string(), event.text);
}

/// The events of a list, which must be there.
template <typename Event>
const std::vector<Event>& events_of(const std::shared_ptr<CL::EventList<Event>>& list) {
  if (!list) throw std::logic_error("A song log that lacks a list of events cannot be converted");
  return list->events;
}

signed char low_byte(std::int32_t value) { return static_cast<signed char>(value & 0xFF); }

template <typename Current, typename Legacy>
void events_down(const std::vector<Current>& from, std::vector<Legacy>& to) {
  to.reserve(from.size());
  for (const Current& event : from)
    to.emplace_back(event.start, event.end, low_byte(static_cast<std::int32_t>(event.value_bits)));
}

void events_down(const std::vector<CL::Transpose>& from, std::vector<TransposeV0>& to) {
  to.reserve(from.size());
  for (const CL::Transpose& event : from)
    to.emplace_back(event.StartPosition(), event.EndPosition(), low_byte(event.IntValue()));
}

void events_down(const std::vector<CL::TempoScale>& from, std::vector<TempoScaleV0>& to) {
  to.reserve(from.size());
  for (const CL::TempoScale& event : from)
    to.emplace_back(event.StartPosition(), event.EndPosition(), event.FloatValue());
}

void events_down(const std::vector<CL::Caesura>& from, std::vector<XCaesura>& to) {
  to.reserve(from.size());
  for (const CL::Caesura& event : from) {
    // The legacy program knows no caesuras with a second word above 1, so they are dropped.
    if (event.second_word <= 1) to.emplace_back(event.Position());
  }
}

void events_down(const std::vector<CL::Marker>& from, std::vector<XScoreMarker>& to) {
  to.reserve(from.size());
  for (const CL::Marker& event : from) to.emplace_back(event.position, event.text);
}

}  // namespace

std::shared_ptr<CL::SongLog> SongLogV0::get_version_1_0() const {
  auto log = std::make_shared<CL::SongLog>(songNumber_, songName_, std::uint16_t{0}, songLength_);
  events_up(vamps, log->vamps->events);
  events_up(repeats, log->repeats->events);
  events_up(cuts, log->cuts->events);
  events_up(clicks, log->clicks->events);
  events_up(tempo_scales, log->tempo_scales->events);
  events_up(transposes, log->transposes->events);
  events_up(caesuras, log->caesuras->events);
  events_up(score_markers, log->markers->events);
  return log;
}

SongLogV0::SongLogV0(const CL::SongLog& log)
    : songNumber_(log.song_number), songName_(log.song_name), songLength_(log.song_length) {
  events_down(events_of(log.vamps), vamps);
  events_down(events_of(log.repeats), repeats);
  events_down(events_of(log.cuts), cuts);
  events_down(events_of(log.clicks), clicks);
  events_down(events_of(log.tempo_scales), tempo_scales);
  events_down(events_of(log.transposes), transposes);
  events_down(events_of(log.caesuras), caesuras);
  events_down(events_of(log.markers), score_markers);
}

CL::ChangeLog ChangeLogV0::get_version_1_0() const {
  CL::ChangeLog log;
  log.show_name = show_name;
  log.log_label = log_label;
  log.identifier = identifier;
  log.log_tag_pair = log_tag_pair;
  for (const auto& [number, song] : songs) log.AddSongLog(song.get_version_1_0());
  return log;
}

ChangeLogV0::ChangeLogV0(const CL::ChangeLog& log)
    : identifier(log.identifier),
      log_label(log.log_label),
      show_name(log.show_name),
      log_tag_pair(log.log_tag_pair) {
  for (const auto& [key, source] : log.song_logs()) {
    if (!source) throw std::logic_error("A change log without the song log " + key + " cannot be converted");
    SongLogV0 song(*source);
    const std::string number = song.songNumber_;
    songs.insert_or_assign(number, std::move(song));
  }
}

}  // namespace version0
