// Makes a song of a MIDI file (docs/midi.md).
#include <algorithm>
#include <array>
#include <limits>

#include "format_converter/version0/conversions/track_ids.h"
#include "toolkit/midi/internal/import_timeline.h"
#include "toolkit/midi/songs.h"

namespace zuna_toolkit::midi {

namespace {

constexpr int kChannels = 16;
constexpr int kPercussionChannel = version0::kDrumId;

/// The first name that a track gives itself; empty where it gives none.
std::string TrackName(const smf::Track& track) {
  const auto is_name = [](const smf::MetaEvent& meta) { return meta.type == smf::kTrackName; };
  const auto found = std::find_if(track.metas.begin(), track.metas.end(), is_name);
  return found == track.metas.end() ? "" : found->data;
}

/// Whether the name of track `index` is the name of the whole sequence.
bool NamesSequence(const smf::File& file, std::size_t index) {
  return index == 0 && (file.format == 0 || file.tracks[0].messages.empty());
}

std::string SongName(const smf::File& file, const std::string& fallback_name) {
  if (file.tracks.empty() || !NamesSequence(file, 0)) return fallback_name;
  const std::string name = TrackName(file.tracks[0]);
  return name.empty() ? fallback_name : name;
}

using MessagesByChannel = std::array<decltype(zuna_midi::VoiceTrack::messages), kChannels>;

MessagesByChannel SplitByChannel(const smf::Track& track) {
  MessagesByChannel channels;
  for (const auto& message : track.messages)
    channels[message.second.status & smf::kChannelMask].push_back(message);
  return channels;
}

/// Builds the voices of a song, track by track.
class VoiceMaker {
 public:
  VoiceMaker(const smf::File& file, zuna_midi::VoiceData& voices, Report& report)
      : file_(file), voices_(voices), report_(report) {}

  void AddTrack(std::size_t index) {
    MessagesByChannel channels = SplitByChannel(file_.tracks[index]);
    const auto used = [](const auto& messages) { return !messages.empty(); };
    const bool several = std::count_if(channels.begin(), channels.end(), used) > 1;
    name_kept_ = NamesSequence(file_, index);
    for (int channel = 0; channel < kChannels; ++channel) {
      auto& messages = channels[static_cast<std::size_t>(channel)];
      if (messages.empty()) continue;
      auto voice = std::make_shared<zuna_midi::VoiceTrack>();
      voice->track_number = NextNumber();
      voice->name = Name(index, channel, several);
      voice->messages = std::move(messages);
      voices_.AddTrack(std::move(voice));
    }
    CountLostNames(file_.tracks[index]);
  }

 private:
  std::uint16_t NextNumber() {
    if (last_number_ == std::numeric_limits<std::uint16_t>::max()) {
      throw Error(ErrorCode::kBeyondShowLimits, "", "it has more than 65535 voices (channels of tracks)",
                  "split it into several files");
    }
    return ++last_number_;
  }

  std::string Name(std::size_t index, int channel, bool several) {
    const std::string own = TrackName(file_.tracks[index]);
    if (channel == kPercussionChannel) {
      name_kept_ |= own == version0::kDrumKitName;
      return std::string(version0::kDrumKitName);
    }
    name_kept_ = true;
    std::string name = own.empty() ? "Track " + std::to_string(index + 1) : own;
    if (several) name += " (channel " + std::to_string(channel + 1) + ")";
    if (version0::is_drum_name(name)) {
      report_.remarks.push_back("voice " + std::to_string(last_number_) + " is named \"" + name +
                                "\" but plays on channel " + std::to_string(channel + 1) +
                                "; format 0.0 would move it to channel 10");
    }
    return name;
  }

  void CountLostNames(const smf::Track& track) {
    const auto is_name = [](const smf::MetaEvent& meta) { return meta.type == smf::kTrackName; };
    auto names = static_cast<std::size_t>(std::count_if(track.metas.begin(), track.metas.end(), is_name));
    if (names == 0) return;
    const bool empty = TrackName(track).empty();
    if (!name_kept_ && !empty) {
      const bool percussion = !track.messages.empty();
      report_.not_kept.Add(percussion ? "name of a percussion track" : "name of a track without messages",
                           percussion ? "names of percussion tracks" : "names of tracks without messages");
    }
    report_.not_kept.Add("further name of a track", "further names of a track", names - 1);
  }

  const smf::File& file_;
  zuna_midi::VoiceData& voices_;
  Report& report_;
  std::uint16_t last_number_ = 0;
  bool name_kept_ = false;  ///< whether the name of the current track has found a place
};

std::uint32_t SongLength(const smf::File& file) {
  std::uint32_t length = 0;
  for (const smf::Track& track : file.tracks) length = std::max(length, track.end);
  return length;
}

}  // namespace

std::shared_ptr<zuna_midi::SongData> ImportSong(const smf::File& file, const std::string& song_number,
                                                const std::string& fallback_name, Report& report) {
  auto song = std::make_shared<zuna_midi::SongData>(song_number, SongName(file, fallback_name), file.division,
                                                    SongLength(file));
  VoiceMaker voices(file, *song->voice_data, report);
  for (std::size_t i = 0; i < file.tracks.size(); ++i) {
    voices.AddTrack(i);
    report.not_kept.Add("system-exclusive message", "system-exclusive messages", file.tracks[i].sysex_count);
  }
  auto timeline = std::make_shared<TL::Timeline>(ImportTimeline(file, report));
  timeline->bars_beats = MakeBarLabels(timeline->meters, file.division, song->song_length);
  if (timeline->bars_beats.size() == kMaxBarLabels) {
    report.remarks.push_back("bars are labelled up to bar " + std::to_string(kMaxBarLabels) + " only");
  }
  song->SetTimeline(std::move(timeline));
  return song;
}

}  // namespace zuna_toolkit::midi
