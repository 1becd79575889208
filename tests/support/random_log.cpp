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
    const bool any_bytes = Below(1) != 0;
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

  float Float() {
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
      list.events.emplace_back(Word(), Word(), Text(), static_cast<std::int32_t>(Word()));
    }
  }

  void Fill(CL::EventList<CL::TempoScale>& list) {
    for (std::uint32_t left = Below(options_.max_events); left != 0; --left) {
      list.events.emplace_back(Word(), Word(), Text(), Float());
    }
  }

  void Fill(CL::EventList<CL::Marker>& list) {
    for (std::uint32_t left = Below(options_.max_events); left != 0; --left) {
      list.events.emplace_back(Word(), Text(), Text());
    }
  }

  void Fill(CL::EventList<CL::Caesura>& list) {
    for (std::uint32_t left = Below(options_.max_events); left != 0; --left) {
      list.events.emplace_back(Word(), Text()).second_word = Word();
    }
  }

  std::shared_ptr<CL::SongLog> Song() {
    auto song = std::make_shared<CL::SongLog>(Text(), Text(), Short(), Word());
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
};

}  // namespace

CL::ChangeLog RandomLog(std::mt19937& random, const LogOptions& options) {
  return Maker(random, options).Log();
}

}  // namespace zuna_test
