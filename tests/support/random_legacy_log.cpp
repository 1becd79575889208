// Random legacy logs.

#include "tests/support/random_legacy_log.h"

#include <bit>
#include <string>

namespace zuna_test {

namespace {

std::uint32_t Below(std::mt19937& random, std::uint32_t limit) {
  return std::uniform_int_distribution<std::uint32_t>(0, limit - 1)(random);
}

/// Any bytes.
std::string Text(std::mt19937& random, std::uint32_t longest) {
  std::string text;
  for (std::uint32_t left = Below(random, longest + 1); left > 0; --left) {
    text.push_back(static_cast<char>(Below(random, 256)));
  }
  return text;
}

/// Small as in real logs, or anything.
std::uint32_t Number(std::mt19937& random) {
  return Below(random, 2) == 0 ? Below(random, 10000) : static_cast<std::uint32_t>(random());
}

/// Any value: for a float any bits, not-a-numbers and infinities too.
void Fill(std::mt19937& random, signed char& value) { value = static_cast<signed char>(random() & 0xFF); }
void Fill(std::mt19937& random, float& value) {
  value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
}

template <typename Value, std::uint8_t Code>
void AddEvents(std::mt19937& random, std::vector<version0::PairedEvent<Value, Code>>& events) {
  for (std::uint32_t left = Below(random, 5); left > 0; --left) {
    events.emplace_back(Number(random), Number(random), Value{});
    Fill(random, events.back().value);
  }
}

version0::SongLogV0 RandomSongLog(std::mt19937& random) {
  version0::SongLogV0 log;
  log.songNumber_ = Below(random, 2) == 0 ? std::to_string(Below(random, 30)) : Text(random, 4);
  log.songName_ = Text(random, Below(random, 20) == 0 ? 255 : 12);
  log.songLength_ = Number(random);
  AddEvents(random, log.cuts);
  AddEvents(random, log.vamps);
  AddEvents(random, log.repeats);
  AddEvents(random, log.clicks);
  AddEvents(random, log.tempo_scales);
  AddEvents(random, log.transposes);
  for (std::uint32_t left = Below(random, 4); left > 0; --left) log.caesuras.emplace_back(Number(random));
  for (std::uint32_t left = Below(random, 4); left > 0; --left)
    log.score_markers.emplace_back(Number(random), Text(random, 10));
  return log;
}

}  // namespace

version0::ChangeLogV0 RandomLegacyLog(std::mt19937& random) {
  version0::ChangeLogV0 log;
  kit::UUID::Bytes identifier{};
  for (std::uint8_t& byte : identifier) byte = static_cast<std::uint8_t>(random());
  log.identifier = kit::UUID(identifier);
  log.log_label = Text(random, 10);
  log.show_name = Text(random, 10);
  log.log_tag_pair = {static_cast<std::uint16_t>(random()), static_cast<std::uint16_t>(random())};
  for (std::uint32_t left = 1 + Below(random, 5); left > 0; --left) {
    const version0::SongLogV0 song = RandomSongLog(random);
    log.songs.insert_or_assign(song.songNumber_, song);
  }
  return log;
}

}  // namespace zuna_test
