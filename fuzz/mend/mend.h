// Mends what a mutation broke without meaning to: lengths, counts and checksums. What is behind them is only
// reached by inputs in which they are right.

#pragma once

#include <string>

namespace fuzz {

/// `bytes` with the right size and checksum in the frame of a current binary file (docs/format-1.md).
std::string MendCurrent(std::string bytes);

/// `bytes` as a legacy show: a count or a length that leads beyond the end is reduced to what is there, and
/// the timelines begin with their mark (docs/format-0.md).
std::string MendLegacyShow(std::string bytes);

/// `bytes` as a legacy log: the same, and the log length is right.
std::string MendLegacyLog(std::string bytes);

/// `bytes` as a Standard MIDI File: the header and every track end where the next mark of a track stands, and
/// the header counts the tracks.
std::string MendMidiFile(std::string bytes);

/// Mends `bytes` as the format that they begin like. A text form has nothing to mend; bytes without a mark
/// are a legacy show.
std::string Mend(const std::string& bytes);

}  // namespace fuzz
