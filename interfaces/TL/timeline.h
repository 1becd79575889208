#pragma once

// The current timeline of a song: tempos, bar labels, keys, pages and meters.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "kit/api.h"

/// The current timeline of a song. All times are ticks of the song's division; lists are in ascending order
/// of time.
namespace TL {

/// A tempo from `time` on.
struct ZUNA_API Tempo {
  std::uint32_t time = 0;          ///< ticks
  std::uint32_t microseconds = 0;  ///< of a quarter note

  /// The length of one tick in seconds when a quarter note has `division` ticks: (microseconds / 1e6) /
  /// division.
  double tick_time(unsigned short division) const;

  /// Clicks a minute, when a click lasts `clocks_per_click` MIDI clocks (24 to the quarter note). Where the
  /// microseconds were rounded from a whole tempo, gives the whole tempo: 545455 µs at 24 clocks are 110, not
  /// 109.9999. Infinite where `microseconds` or `clocks_per_click` is 0.
  double bpm(unsigned char clocks_per_click) const;

  bool operator==(const Tempo&) const = default;
};

/// The label of a bar or beat.
class ZUNA_API BarsBeats {
 public:
  std::uint32_t time = 0;  ///< ticks
  std::uint8_t tag = 0;    ///< carried unchanged

  /// Stores `label`: its bytes up to the first NUL, at most 7 of them. A longer label is cut, but not
  /// inside a character where the label is valid UTF-8.
  void bar_number(const std::string& label);

  /// The stored label, NUL-terminated.
  const char* bar_number() const { return text_.data(); }

  bool operator==(const BarsBeats&) const = default;

 private:
  std::array<char, 8> text_{};
};

/// A key signature.
struct ZUNA_API Key {
  std::uint32_t time = 0;  ///< ticks
  std::int16_t key = 0;    ///< sharps, or flats where negative
  std::uint16_t mode = 0;  ///< 0 is major, 1 minor

  bool operator==(const Key&) const = default;
};

/// A page of the score that begins at `time`.
struct ZUNA_API PageNumber {
  std::uint32_t time = 0;  ///< ticks
  std::uint32_t page = 0;  ///< the number of the page

  bool operator==(const PageNumber&) const = default;
};

/// A time signature and its metronome click.
struct ZUNA_API Meter {
  std::uint32_t time = 0;                   ///< ticks
  std::uint8_t numerator = 0;               ///< beats of a bar
  std::uint8_t denominator = 0;             ///< the note that is a beat: 4 for a quarter
  std::uint8_t clocks_per_click = 0;        ///< MIDI clocks, 24 to the quarter note
  std::uint8_t notated_32_per_quarter = 0;  ///< notated 32nd notes in 24 MIDI clocks

  /// The notated 32nd notes in one click: clocks_per_click × notated_32_per_quarter / 24, rounded half away
  /// from zero, its low 8 bits.
  std::uint8_t notated_32_per_click() const;

  bool operator==(const Meter&) const = default;
};

/// The five lists of a song's timeline. Entries are appended in ascending order of time; they are not sorted.
struct ZUNA_API Timeline {
  /// In ascending order of time.
  ///@{
  std::vector<Tempo> tempos;
  std::vector<BarsBeats> bars_beats;
  std::vector<Key> keys;
  std::vector<PageNumber> page_numbers;
  std::vector<Meter> meters;
  ///@}

  bool operator==(const Timeline&) const = default;
};

}  // namespace TL
