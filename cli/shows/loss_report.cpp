#include "cli/shows/loss_report.h"

#include <map>

#include "cli/base/loss_list.h"
#include "cli/shows/timeline_losses.h"

namespace zuna_cli {

namespace {

constexpr std::uint16_t kReservedDefault = 0xFFFF;

std::string VoiceText(const zuna_midi::VoiceTrack& voice) {
  return "voice " + std::to_string(voice.track_number) + " \"" + voice.name + '"';
}

/// Compares the voices of one song with those that come back. Voices of the same id come back as one, with
/// their messages one voice after the other.
class VoiceComparison {
 public:
  VoiceComparison(std::string where, zuna_midi::VoiceData& after, LossList& losses)
      : where_(std::move(where)), after_(after), losses_(losses) {}

  void Compare(const zuna_midi::VoiceTrack& before, std::uint8_t id) {
    const zuna_midi::VoiceTrack& after = *after_.GetTrack(id);
    if (before.track_number != id) {
      Add("voice number", "voice numbers", before, 1, [&] { return " becomes voice " + std::to_string(id); });
    }
    if (before.reserved != kReservedDefault) {
      Add("reserved field", "reserved fields", before, 1,
          [&] { return ": " + std::to_string(before.reserved); });
    }
    const bool merged = next_message_.contains(id);
    if (merged)
      Add("voice of its own", "voices of their own", before, 1, [&] { return " joins " + VoiceText(after); });
    if (before.name != after.name) {
      Add("voice name", "voice names", before, 1, [&] { return " becomes \"" + after.name + '"'; });
    }
    CompareMessages(before, after, next_message_[id]);
  }

 private:
  void CompareMessages(const zuna_midi::VoiceTrack& before, const zuna_midi::VoiceTrack& after,
                       std::size_t& next) {
    std::size_t changed = 0;
    std::string first;
    for (const auto& message : before.messages) {
      const auto& kept = after.messages.at(next++);
      if (message == kept) continue;
      if (changed++ > 0) continue;
      first = " at " + std::to_string(message.first) + ": status " + std::to_string(message.second.status) +
              " becomes " + std::to_string(kept.second.status);
    }
    Add("message channel", "message channels", before, changed, [&] { return first; });
  }

  template <class MakeText>
  void Add(const char* one, const char* many, const zuna_midi::VoiceTrack& voice, std::size_t count,
           MakeText&& text) {
    losses_.Add(one, many, count, [&] { return where_ + VoiceText(voice) + text(); });
  }

  std::string where_;
  zuna_midi::VoiceData& after_;
  LossList& losses_;
  std::map<std::uint8_t, std::size_t> next_message_;
};

void AddSongLosses(const zuna_midi::SongData& before, const version0::SongData& legacy,
                   zuna_midi::SongData& after, LossList& losses) {
  const std::string where = "song " + before.song_number + ": ";
  VoiceComparison voices(where, *after.voice_data, losses);
  auto track = legacy.tracks.begin();  // The tracks stand in the order of the voices.
  for (const auto& [number, voice] : before.voice_data->tracks()) voices.Compare(*voice, (track++)->track_id);
  AddTimelineLosses(*before.timeline, *after.timeline, where, losses);
}

}  // namespace

std::vector<Loss> DownLosses(const zuna_midi::ShowData& show, const version0::ShowData& legacy) {
  LossList losses;
  if (!show.show_name.empty()) {
    losses.Add("show name", "show names", 1,
               [&] { return '"' + show.show_name + "\"; up takes it from the log"; });
  }
  for (const auto& [number, song] : show.songs()) {
    const version0::SongData& old_form = legacy.songs.at(number);
    AddSongLosses(*song, old_form, *old_form.get_version_1_0(), losses);
  }
  return losses.Take();
}

}  // namespace zuna_cli
