// What a voice has, in units of the picture.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "toolkit/comparison/internal/voices.h"
#include "toolkit/view/internal/drawing.h"
#include "zuna_midi/voice_data.h"

namespace zuna_toolkit {

inline constexpr int kKeys = 128;  ///< of MIDI

/// A note across the picture.
struct DrawnNote {
  int x;
  int end;
  int key;
};

/// What only one of two voices has.
struct MarkedContent {
  std::vector<DrawnNote> notes;
  std::vector<int> controls;  ///< where there are other messages
};

/// A program change.
struct Program {
  std::uint32_t tick;
  int number;  ///< from 1, as in General MIDI
};

/// What a voice does, in units of the picture.
struct VoiceContent {
  std::vector<DrawnNote> notes;
  std::vector<Program> programs;  ///< kMostOfAKind at most
  std::vector<int> controls;      ///< where there are controllers, pressures and pitch bends
  std::set<int> channels;         ///< from 1
  int lowest = kKeys;             ///< key
  int highest = -1;
};

/// What both voices of a pair have alone.
struct VoiceMarks {
  MarkedContent here;   ///< of the song that is drawn
  MarkedContent there;  ///< of the other one
};

/// Reads the messages of a voice. A note without an end reaches to the end of the song.
VoiceContent ContentOf(const zuna_midi::VoiceTrack& voice, const Scale& scale);

/// Compares the voices of a pair, of which one may be missing. Voices that differ in channels alone look the
/// same.
VoiceMarks MarksOfVoices(const VoicePair& pair, const Scale& scale);

}  // namespace zuna_toolkit
