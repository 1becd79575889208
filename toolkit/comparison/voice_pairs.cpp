// Which voices of two songs are compared with each other.
#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "toolkit/comparison/internal/voices.h"

namespace zuna_toolkit {

std::vector<VoicePair> PairByName(const zuna_midi::VoiceData& before, const zuna_midi::VoiceData& after) {
  std::multimap<std::string, const zuna_midi::VoiceTrack*> by_name;
  for (const auto& [number, voice] : after.tracks()) by_name.emplace(voice->name, voice.get());
  std::vector<VoicePair> pairs;
  std::set<const zuna_midi::VoiceTrack*> paired;
  for (const auto& [number, voice] : before.tracks()) {
    const auto found = by_name.find(voice->name);
    pairs.push_back({voice.get(), found == by_name.end() ? nullptr : found->second});
    if (found == by_name.end()) continue;
    paired.insert(found->second);
    by_name.erase(found);
  }
  for (VoicePair& pair : pairs) {
    if (pair.after != nullptr) continue;
    const auto same = after.tracks().find(pair.before->track_number);
    if (same == after.tracks().end() || !paired.insert(same->second.get()).second) continue;
    pair.after = same->second.get();
  }
  for (const auto& [number, voice] : after.tracks()) {
    if (!paired.contains(voice.get())) pairs.push_back({nullptr, voice.get()});
  }
  return pairs;
}

std::vector<VoicePair> PairByTrack(const zuna_midi::VoiceData& before, const version0::SongData& legacy,
                                   const zuna_midi::VoiceData& after) {
  std::map<std::uint8_t, std::size_t> next_message;
  std::vector<VoicePair> pairs;
  auto track = legacy.tracks.begin();
  for (const auto& [number, voice] : before.tracks()) {
    const std::uint8_t id = (track++)->track_id;
    VoicePair pair{voice.get(), after.tracks().at(id).get()};
    pair.merged = next_message.contains(id);
    pair.first_message = next_message[id];
    pair.message_count = voice->messages.size();
    next_message[id] += pair.message_count;
    pairs.push_back(pair);
  }
  return pairs;
}

}  // namespace zuna_toolkit
