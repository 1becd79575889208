#pragma once

// What all events of a song have in common.

#include <cstdint>
#include <iosfwd>
#include <string>
#include <utility>

#include "kit/api.h"
#include "kit/cout_buffer.h"

namespace cmn {

/// An event of a song: something of one kind at one position. The order of the virtual operations is part of
/// the binary interface.
class ZUNA_API ZunaEvent {
 public:
  std::string label;  ///< carried unchanged; empty in events that come from a legacy file

  /// An event with this label.
  explicit ZunaEvent(std::string event_label) : label(std::move(event_label)) {}
  ZunaEvent(const ZunaEvent&) = default;
  ZunaEvent(ZunaEvent&&) noexcept = default;
  ZunaEvent& operator=(const ZunaEvent&) = default;
  ZunaEvent& operator=(ZunaEvent&&) noexcept = default;
  virtual ~ZunaEvent();

  /// The position of the event, in ticks from the beginning of the song.
  virtual std::uint32_t Position() const = 0;

  /// The kind of the event, one of the codes in codes/zuna_event_codes.h.
  virtual std::uint8_t EventCode() const = 0;

  /// The order of events in a song: by position, then by event code. Labels and values do not count.
  virtual bool operator<(const ZunaEvent& other) const;

  virtual bool PositionLess(std::uint32_t position) const;        ///< whether Position() < position
  virtual bool PositionGreater(std::uint32_t position) const;     ///< whether Position() > position
  virtual bool PositionEqual(std::uint32_t position) const;       ///< whether Position() == position
  virtual bool PositionNotLess(std::uint32_t position) const;     ///< whether Position() >= position
  virtual bool PositionNotGreater(std::uint32_t position) const;  ///< whether Position() <= position

  /// Whether two events are equal in that order: same position and same event code.
  ///@{
  virtual bool operator==(const ZunaEvent& other) const;
  virtual bool operator!=(const ZunaEvent& other) const;
  ///@}

  /// Writes the event as text for a person, as in "Vamp(0, 480, 2)"; a label that is not empty follows after
  /// a blank, between quotation marks. Leaves the stream's format flags as they were.
  virtual void WriteString(std::ostream& os) const = 0;
  /// The same text, for standard output.
  virtual void WriteString(kit::CoutBuffer& buffer) const;
};

}  // namespace cmn
