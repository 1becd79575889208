#pragma once

// An edit between two positions of a song.

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "cmn/file_version.h"
#include "cmn/zuna_event.h"
#include "kit/api.h"

namespace CL {

/// Where a display draws an event, as fractions of the space that it has for it.
struct DisplayRecord {
  float x = 0;         ///< from the left
  float y = 0;         ///< from the top
  float width = 0;     ///< of the event
  float height = 0;    ///< of the event
  float anchor_x = 0;  ///< the anchor point, from the left
  float anchor_y = 0;  ///< the anchor point, from the top
};

/// Six words that a display keeps with an event that it has drawn.
using DisplayWords = std::array<std::uint32_t, 6>;

/// An edit from one position to another with a value: an integer or a float, depending on the class. The
/// order of the virtual operations is part of the binary interface.
class ZUNA_API PairedEvent : public cmn::ZunaEvent {
 public:
  std::uint32_t start;  ///< in ticks
  std::uint32_t end;    ///< in ticks; may be before the start
  std::uint32_t
      value_bits;  ///< the value: an integer (a negative one in two's complement), or a float's bits

  std::uint32_t Position() const override;

  void WriteString(std::ostream& os) const override;
  using cmn::ZunaEvent::WriteString;

  virtual std::uint32_t StartPosition() const;            ///< in ticks
  virtual void SetStartPosition(std::uint32_t position);  ///< in ticks; may be after the end
  virtual std::uint32_t EndPosition() const;              ///< in ticks
  virtual void SetEndPosition(std::uint32_t position);    ///< in ticks; may be before the start

  /// The value as a number, in either representation.
  virtual double value() const;

  virtual void Reserved1();  ///< does nothing

  /// The value as an integer or as a float. They share their 32 bits: a class uses one of the two.
  virtual std::int32_t IntValue() const;
  virtual void SetIntValue(std::int32_t number);  ///< replaces all 32 bits
  virtual float FloatValue() const;               ///< the bits as a float
  virtual void SetFloatValue(float number);       ///< replaces all 32 bits
  virtual void SetFloatValue(double number);      ///< rounded to a float

  /// Fills a record for an event that has not been laid out: all 0, the anchor in the middle.
  virtual void FillDisplayRecord(DisplayRecord& record) const;

  virtual void ClearDisplayWords(DisplayWords& words) const;  ///< sets all six to 0

  virtual void Reserved2();        ///< does nothing
  virtual void Reserved3();        ///< does nothing
  virtual int Reserved4() const;   ///< 0
  virtual bool Reserved5() const;  ///< true

  /// The length in ticks; 0 where the end is not after the start.
  virtual std::uint32_t Span() const;

  /// Writes the event as it is stored at the front of its list in a log file of this version: bytes in 1.1
  /// and 1.2, a JSON object in 2.0. Throws cmn::UnsupportedVersionError for any other version. A stream that
  /// cannot be written gives kit::IoError, or std::ios_base::failure where its exception mask asks for it.
  virtual void WriteBinary(std::ostream& os, const cmn::FileVersion& version) const;

 protected:
  /// From one position to another, in ticks; `bits` is the value as `value_bits` holds it.
  PairedEvent(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
              std::uint32_t bits);
};

}  // namespace CL
