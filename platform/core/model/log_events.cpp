// The events of a log: their order, their text and their values.

#include <bit>
#include <charconv>
#include <limits>
#include <ostream>

#include "CL/paired_event.h"
#include "CL/paired_events.h"
#include "CL/point_events.h"
#include "cmn/zuna_event.h"
#include "codes/zuna_event_codes.h"
#include "kit/format.h"

namespace codes {

const std::map<std::uint8_t, std::string> editNameByZunaEventCode = {
    {kVamp, "Vamp"},           {kRepeat, "Repeat"},         {kCut, "Cut"},
    {kTranspose, "Transpose"}, {kTempoScale, "TempoScale"}, {kMarker, "Marker"},
    {kClick, "Click"},         {kFermata, "Fermata"},       {kCaesura, "Caesura"},
};

}  // namespace codes

namespace cmn {

ZunaEvent::~ZunaEvent() = default;

bool ZunaEvent::operator<(const ZunaEvent& other) const {
  const std::uint32_t mine = Position();
  const std::uint32_t others = other.Position();
  return mine != others ? mine < others : EventCode() < other.EventCode();
}

bool ZunaEvent::PositionLess(std::uint32_t position) const { return Position() < position; }
bool ZunaEvent::PositionGreater(std::uint32_t position) const { return Position() > position; }
bool ZunaEvent::PositionEqual(std::uint32_t position) const { return Position() == position; }
bool ZunaEvent::PositionNotLess(std::uint32_t position) const { return !PositionLess(position); }
bool ZunaEvent::PositionNotGreater(std::uint32_t position) const { return !PositionGreater(position); }

bool ZunaEvent::operator==(const ZunaEvent& other) const {
  return Position() == other.Position() && EventCode() == other.EventCode();
}
bool ZunaEvent::operator!=(const ZunaEvent& other) const { return !(*this == other); }

void ZunaEvent::WriteString(kit::CoutBuffer& buffer) const { WriteString(buffer.stream()); }

}  // namespace cmn

namespace CL {

namespace {

/// Writes an event as text for a person: its name, `values` in parentheses, and its label if it has one.
void WriteEventText(std::ostream& os, const cmn::ZunaEvent& event, const std::string& values) {
  os << codes::editNameByZunaEventCode.at(event.EventCode()) << '(' << values << ')';
  if (!event.label.empty()) os << " \"" << event.label << '"';
}

/// The bits of a number, negative ones in two's complement.
std::uint32_t Bits(std::int32_t number) { return static_cast<std::uint32_t>(number); }

}  // namespace

PairedEvent::PairedEvent(std::uint32_t start_position, std::uint32_t end_position,
                         const std::string& event_label, std::uint32_t bits)
    : cmn::ZunaEvent(event_label), start(start_position), end(end_position), value_bits(bits) {}

std::uint32_t PairedEvent::Position() const { return start; }

void PairedEvent::WriteString(std::ostream& os) const {
  WriteEventText(os, *this,
                 kit::format("%lu, %lu, %ld", static_cast<unsigned long>(start),
                             static_cast<unsigned long>(end), static_cast<long>(IntValue())));
}

std::uint32_t PairedEvent::StartPosition() const { return start; }
void PairedEvent::SetStartPosition(std::uint32_t position) { start = position; }
std::uint32_t PairedEvent::EndPosition() const { return end; }
void PairedEvent::SetEndPosition(std::uint32_t position) { end = position; }

double PairedEvent::value() const { return IntValue(); }

void PairedEvent::Reserved1() {}

std::int32_t PairedEvent::IntValue() const { return static_cast<std::int32_t>(value_bits); }
void PairedEvent::SetIntValue(std::int32_t number) { value_bits = static_cast<std::uint32_t>(number); }
float PairedEvent::FloatValue() const { return std::bit_cast<float>(value_bits); }
void PairedEvent::SetFloatValue(float number) { value_bits = std::bit_cast<std::uint32_t>(number); }

// IEEE 754 defines the conversion for every double: one beyond the largest float gives an infinity.
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);
void PairedEvent::SetFloatValue(double number) { SetFloatValue(static_cast<float>(number)); }

void PairedEvent::FillDisplayRecord(DisplayRecord& record) const {
  record = {};
  record.anchor_x = 0.5F;
  record.anchor_y = 0.5F;
}

void PairedEvent::ClearDisplayWords(DisplayWords& words) const { words.fill(0); }

void PairedEvent::Reserved2() {}
void PairedEvent::Reserved3() {}
int PairedEvent::Reserved4() const { return 0; }
bool PairedEvent::Reserved5() const { return true; }

std::uint32_t PairedEvent::Span() const { return end > start ? end - start : 0; }

Vamp::Vamp(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
           std::int32_t number)
    : PairedEvent(start_position, end_position, event_label, Bits(number)) {}
std::uint8_t Vamp::EventCode() const { return evt_code; }

Repeat::Repeat(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
               std::int32_t number)
    : PairedEvent(start_position, end_position, event_label, Bits(number)) {}
std::uint8_t Repeat::EventCode() const { return evt_code; }

Cut::Cut(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
         std::int32_t number)
    : PairedEvent(start_position, end_position, event_label, Bits(number)) {}
std::uint8_t Cut::EventCode() const { return evt_code; }

Click::Click(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
             std::int32_t number)
    : PairedEvent(start_position, end_position, event_label, Bits(number)) {}
std::uint8_t Click::EventCode() const { return evt_code; }

Fermata::Fermata(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
                 std::int32_t number)
    : PairedEvent(start_position, end_position, event_label, Bits(number)) {}
std::uint8_t Fermata::EventCode() const { return evt_code; }

Transpose::Transpose(std::uint32_t start_position, std::uint32_t end_position, const std::string& event_label,
                     std::int32_t number)
    : PairedEvent(start_position, end_position, event_label, Bits(number)) {}
std::uint8_t Transpose::EventCode() const { return evt_code; }

TempoScale::TempoScale(std::uint32_t start_position, std::uint32_t end_position,
                       const std::string& event_label, float factor)
    : PairedEvent(start_position, end_position, event_label, std::bit_cast<std::uint32_t>(factor)) {}
std::uint8_t TempoScale::EventCode() const { return evt_code; }

void TempoScale::WriteString(std::ostream& os) const {
  char factor[32];
  char* const factor_end = std::to_chars(factor, factor + sizeof factor, FloatValue()).ptr;
  std::string values =
      kit::format("%lu, %lu, ", static_cast<unsigned long>(start), static_cast<unsigned long>(end));
  WriteEventText(os, *this, values.append(factor, factor_end));
}

double TempoScale::value() const { return FloatValue(); }

PointEvent::PointEvent(std::uint32_t event_position, const std::string& event_label)
    : cmn::ZunaEvent(event_label), position(event_position) {}

std::uint32_t PointEvent::Position() const { return position; }

Caesura::Caesura(std::uint32_t event_position, const std::string& event_label)
    : PointEvent(event_position, event_label) {}

std::uint8_t Caesura::EventCode() const { return evt_code; }

void Caesura::WriteString(std::ostream& os) const {
  WriteEventText(
      os, *this,
      kit::format("%lu, %lu", static_cast<unsigned long>(position), static_cast<unsigned long>(second_word)));
}

Marker::Marker(std::uint32_t event_position, const std::string& event_label, const std::string& marker_text)
    : PointEvent(event_position, event_label), text(marker_text) {}

std::uint8_t Marker::EventCode() const { return evt_code; }

void Marker::WriteString(std::ostream& os) const {
  WriteEventText(os, *this, kit::format("%lu, ", static_cast<unsigned long>(position)) + text);
}

}  // namespace CL
