// The events of the songs that came back of a show of a current version.
#include "toolkit/rescue/internal/current_events.h"

#include "format_converter/version0/conversions/track_ids.h"
#include "toolkit/rescue/internal/legacy_events.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"
#include "zuna_midi/show_data.h"

namespace zuna_toolkit {

namespace {

std::vector<std::string> RemarksOn(const zuna_midi::SongData& song) {
  std::size_t odd = 0;   // events that are no message
  std::size_t back = 0;  // events whose time is before that of the one before them
  for (const auto& [number, track] : song.voice_data->tracks()) {
    const bool may_be_several = version0::is_drum_name(track->name);  // drum voices share a legacy track
    std::uint32_t before = 0;
    for (const auto& [time, message] : track->messages) {
      if (!smf::IsChannelMessage(message)) ++odd;
      if (time < before && !may_be_several) ++back;
      before = time;
    }
  }
  std::vector<std::string> remarks;
  if (odd > 0) remarks.push_back(OddEventsRemark(odd));
  if (back > 0) remarks.push_back(Counted(back, "time goes back", "times go back"));
  return remarks;
}

}  // namespace

void JudgeEvents(Rescued& rescued) {
  const auto* show = rescued.document.As<zuna_midi::ShowData>();
  if (show == nullptr) return;
  for (RescuedSong& told : rescued.report.songs) {
    if (told.state == SongState::kLost) continue;
    const auto song = show->songs().find(told.number);
    if (song == show->songs().end()) continue;
    const std::vector<std::string> remarks = RemarksOn(*song->second);
    if (!remarks.empty() && !told.vouched) told.state = SongState::kPartly;
    told.remarks.insert(told.remarks.end(), remarks.begin(), remarks.end());
  }
}

}  // namespace zuna_toolkit
