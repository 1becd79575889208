#pragma once

// The classes of edits at one position of a song.

#include <cstdint>
#include <iosfwd>
#include <string>

#include "cmn/file_version.h"
#include "cmn/zuna_event.h"
#include "codes/zuna_event_codes.h"
#include "kit/api.h"

namespace CL {

/// An edit at one position.
class ZUNA_API PointEvent : public cmn::ZunaEvent {
 public:
  std::uint32_t position;  ///< in ticks

  std::uint32_t Position() const override;

  /// As PairedEvent::WriteBinary().
  virtual void WriteBinary(std::ostream& os, const cmn::FileVersion& version) const = 0;

 protected:
  /// At a position in ticks.
  PointEvent(std::uint32_t event_position, const std::string& event_label);
};

/// A pause.
class ZUNA_API Caesura final : public PointEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kCaesura;  ///< what EventCode() gives

  std::uint32_t second_word = 0;  ///< carried unchanged; the legacy format has no caesura with more than 1

  /// At a position in ticks.
  Caesura(std::uint32_t event_position, const std::string& event_label);
  std::uint8_t EventCode() const override;
  void WriteString(std::ostream& os) const override;
  using cmn::ZunaEvent::WriteString;
  void WriteBinary(std::ostream& os, const cmn::FileVersion& version) const override;
};

/// A text at a position of the score, such as a rehearsal letter.
class ZUNA_API Marker final : public PointEvent {
 public:
  static constexpr std::uint8_t evt_code = codes::kMarker;  ///< what EventCode() gives

  std::string text;  ///< the text of the marker

  /// At a position in ticks.
  Marker(std::uint32_t event_position, const std::string& event_label, const std::string& marker_text);
  std::uint8_t EventCode() const override;
  void WriteString(std::ostream& os) const override;
  using cmn::ZunaEvent::WriteString;
  void WriteBinary(std::ostream& os, const cmn::FileVersion& version) const override;
};

}  // namespace CL
