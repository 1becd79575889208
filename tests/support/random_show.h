// Random current shows.

#pragma once

#include <cstdint>
#include <random>

#include "zuna_midi/show_data.h"

namespace zuna_test {

/// What a random show looks like.
struct ShowOptions {
  unsigned max_songs = 4;
  unsigned max_voices = 4;
  unsigned max_entries = 12;   ///< in each list of a timeline
  unsigned max_messages = 60;  ///< of each voice
  /// Any value in any field: arbitrary bytes in texts, times in no order, a division of 0, status bytes below
  /// 0x80, reserved fields and track numbers from the whole range, lists without entries. Otherwise the show
  /// is one that a user could have made: UTF-8 texts, ascending times, a meter and a tempo at 0, a length.
  bool wild = false;
};

/// A show that depends on nothing but the state of `random` and the options: the same on every machine.
zuna_midi::ShowData RandomShow(std::mt19937& random, const ShowOptions& options = {});

/// A number from 0 to `max`, with the edges more often than their share.
std::uint32_t RandomNumber(std::mt19937& random, std::uint32_t max);

}  // namespace zuna_test
