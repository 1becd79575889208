// Random current logs.

#include "tests/support/random_log.h"

#include <array>
#include <bit>
#include <memory>
#include <string>

#include "tests/support/random_show.h"

namespace zuna_test {

namespace {

class Maker {
 public:
  Maker(std::mt19937& random, const LogOptions& options) : random_(random), options_(options) {}

  CL::ChangeLog Log() {
    CL::ChangeLog log;
    log.show_name = Text();
    log.log_label = Text();
    kit::UUID::Bytes identifier{};
    for (std::uint8_t& byte : identifier) byte = static_cast<std::uint8_t>(random_());
    log.identifier = kit::UUID(identifier);
    log.log_tag_pair = {Short(), Short()};
    for (std::uint32_t left = Below(options_.max_songs); left != 0; --left) log.AddSongLog(Song());
    return log;
  }

 private:
  /// A number from 0 to `max`.
  std::uint32_t Below(std::uint32_t max) { return static_cast<std::uint32_t>(random_()) % (max + 1); }
  std::uint32_t Word() { return RandomNumber(random_, 0xFFFFFFFF); }
  std::uint16_t Short() { return static_cast<std::uint16_t>(RandomNumber(random_, 0xFFFF)); }

  std::string Text() {
    static constexpr std::array<const char*, 6> kPieces = {"a", "til cue", "\"\\\n", "é", "𝄐", "7"};
    const bool any_bytes = options_.wild && Below(1) != 0;
    std::string text;
    for (std::uint32_t left = Below(1) * Below(20); left != 0; --left) {
      if (any_bytes) {
        text += static_cast<char>(Below(255));
      } else {
        text += kPieces.at(Below(kPieces.size() - 1));
      }
    }
    return text;
  }

  /// A position after `start`, within the song.
  std::uint32_t Position(std::uint32_t start = 0) {
    return options_.wild ? Word() : start + Below(song_length_ - start);
  }

  std::int32_t Integer() { return static_cast<std::int32_t>(options_.wild ? Word() : 1 + Below(99)); }

  float Float() {
    if (!options_.wild) return 0.25F * static_cast<float>(1 + Below(15));
    static constexpr std::array<std::uint32_t, 8> kBits = {
        0x00000000, 0x80000000,   // zero, minus zero
        0x00000001, 0x007FFFFF,   // the denormal numbers at both ends
        0x7F7FFFFF, 0x7F800000,   // the largest number, infinity
        0xFF800000, 0x7FC00001};  // minus infinity, not a number
    return std::bit_cast<float>(Below(1) != 0 ? kBits.at(Below(kBits.size() - 1)) : Word());
  }

  template <typename Event>
  void Fill(CL::EventList<Event>& list) {
    for (std::uint32_t left = Below(options_.max_events); left != 0; --left) {
      const std::uint32_t start = Position();
      list.events.emplace_back(start, Position(start), Text(), Integer());
    }
  }

  void Fill(CL::EventList<CL::TempoScale>& list) {
    for (std::uint32_t left = Below(options_.max_events); left != 0; --left) {
      const std::uint32_t start = Position();
      list.events.emplace_back(start, Position(start), Text(), Float());
    }
  }

  void Fill(CL::EventList<CL::Marker>& list) {
    for (std::uint32_t left = Below(options_.max_events); left != 0; --left) {
      list.events.emplace_back(Position(), Text(), Text());
    }
  }

  void Fill(CL::EventList<CL::Caesura>& list) {
    for (std::uint32_t left = Below(options_.max_events); left != 0; --left) {
      list.events.emplace_back(Position(), Text()).second_word = Word();
    }
  }

  std::shared_ptr<CL::SongLog> Song() {
    song_length_ = options_.wild ? Word() : 1 + Below(100000);
    const std::string number = options_.wild ? Text() : std::to_string(Below(100));
    auto song = std::make_shared<CL::SongLog>(number, Text(), Short(), song_length_);
    song->attacca = static_cast<std::uint8_t>(Below(255));
    Fill(*song->vamps);
    Fill(*song->repeats);
    Fill(*song->cuts);
    Fill(*song->transposes);
    Fill(*song->tempo_scales);
    Fill(*song->clicks);
    Fill(*song->fermatas);
    Fill(*song->markers);
    Fill(*song->caesuras);
    return song;
  }

  std::mt19937& random_;
  const LogOptions& options_;
  std::uint32_t song_length_ = 0;  ///< of the song that is being made
};

}  // namespace

CL::ChangeLog RandomLog(std::mt19937& random, const LogOptions& options) {
  return Maker(random, options).Log();
}

}  // namespace zuna_test
