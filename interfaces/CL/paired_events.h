#pragma once

// The classes of edits between two positions of a song.

#include <cstdint>
#include <iosfwd>
#include <string>

#include "CL/paired_event.h"
#include "codes/zuna_event_codes.h"

namespace CL {

/// The part of a song that is repeated until the player continues.
class ZUNA_API Vamp final : public PairedEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kVamp;  ///< what EventCode() gives

  /// From one position to another, in ticks; `number` is its value.
  Vamp(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
       std::int32_t number);
  std::uint8_t EventCode() const override;
};

/// The part of a song that is played a number of times.
class ZUNA_API Repeat final : public PairedEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kRepeat;  ///< what EventCode() gives

  /// From one position to another, in ticks; `number` is how often it is played.
  Repeat(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
         std::int32_t number);
  std::uint8_t EventCode() const override;
};

/// The part of a song that is left out.
class ZUNA_API Cut final : public PairedEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kCut;  ///< what EventCode() gives

  /// From one position to another, in ticks; `number` is its value.
  Cut(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
      std::int32_t number);
  std::uint8_t EventCode() const override;
};

/// The part of a song with a metronome click.
class ZUNA_API Click final : public PairedEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kClick;  ///< what EventCode() gives

  /// From one position to another, in ticks; `number` is its value.
  Click(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
        std::int32_t number);
  std::uint8_t EventCode() const override;
};

/// A note that is held. The legacy format has none.
class ZUNA_API Fermata final : public PairedEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kFermata;  ///< what EventCode() gives

  /// From one position to another, in ticks; `number` is its value.
  Fermata(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
          std::int32_t number);
  std::uint8_t EventCode() const override;
};

/// The part of a song that sounds higher or lower by a number of semitones.
class ZUNA_API Transpose final : public PairedEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kTranspose;  ///< what EventCode() gives

  /// From one position to another, in ticks; `number` is the semitones, downwards where negative.
  Transpose(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
            std::int32_t number);
  std::uint8_t EventCode() const override;
};

/// The part of a song that is played faster or slower by a factor. The only class whose value is a float.
class ZUNA_API TempoScale final : public PairedEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kTempoScale;  ///< what EventCode() gives

  /// From one position to another, in ticks; `factor` is its value.
  TempoScale(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
             float factor);
  std::uint8_t EventCode() const override;
  void WriteString(std::ostream& os) const override;
  using PairedEvent::WriteString;
  double value() const override;
  void WriteBinary(std::ostream& os, const cmn::FileVersion& version) const override;
};

}  // namespace CL
