// What the current formats are compared with: other ways to keep the music of a show.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "std_midi/voice_message.h"
#include "zuna_midi/show_data.h"

namespace zuna_bench {

/// The messages of a voice with their times in ticks.
using Messages = std::vector<std::pair<std::uint32_t, std_midi::VoiceMessage>>;

/// A library or a format, with the structure in memory that a program works with.
class Peer {
 public:
  Peer() = default;
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  virtual ~Peer() = default;

  /// Fills its own structure with the music of a show.
  virtual void Take(const zuna_midi::ShowData& show) = 0;
  /// Its own structure as the bytes of files: one for a show, or one for each song.
  virtual std::vector<std::string> Write() = 0;
  /// Fills its own structure from what Write() gave.
  virtual void Read(const std::vector<std::string>& files) = 0;
  /// The messages in its own structure, of all voices of all songs in order.
  virtual std::vector<Messages> Voices() const = 0;
};

/// The messages of a show, of all voices of all songs in order.
std::vector<Messages> VoicesOf(const zuna_midi::ShowData& show);

std::unique_ptr<Peer> MakeCurrent(std::uint8_t major, std::uint8_t minor);
std::unique_ptr<Peer> MakeOwnMidi();
std::unique_ptr<Peer> MakeLibsmf();
std::unique_ptr<Peer> MakeProtobuf();
std::unique_ptr<Peer> MakeSqlite();

}  // namespace zuna_bench
