#pragma once

// The voices of a song in the current model.

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kit/api.h"
#include "std_midi/voice_message.h"

namespace zuna_midi {

/// One voice of a song.
struct ZUNA_API VoiceTrack {
  std::uint16_t track_number = 0;   ///< the key under which VoiceData holds the track
  std::string name;                 ///< "Drum Kit" and "Drums" mark drum voices
  std::uint16_t reserved = 0xFFFF;  ///< carried unchanged; 0xFFFF in tracks that were built here
  /// The messages with their absolute time in ticks of the song's division, in the order in which they were
  /// appended.
  std::vector<std::pair<std::uint32_t, std_midi::VoiceMessage>> messages;

  bool operator==(const VoiceTrack&) const = default;
};

/// The voice tracks of one song, in ascending order of track number.
class ZUNA_API VoiceData {
 public:
  /// In ascending order of track number.
  using Tracks = std::map<std::uint16_t, std::shared_ptr<VoiceTrack>>;

  /// Adds a track under its track number and replaces one that is already there under that number. Throws
  /// std::invalid_argument for a null pointer.
  void AddTrack(std::shared_ptr<VoiceTrack> track);

  /// The track with this number. Throws std::out_of_range naming the number when there is none.
  VoiceTrack* GetTrack(unsigned short track_number);

  /// The number of tracks, modulo 65536.
  unsigned short track_count() const { return static_cast<unsigned short>(tracks_.size()); }

  /// The tracks by number, for walking them.
  const Tracks& tracks() const { return tracks_; }

 private:
  Tracks tracks_;
};

}  // namespace zuna_midi
