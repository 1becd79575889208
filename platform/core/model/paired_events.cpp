#include "CL/paired_events.h"

#include <bit>
#include <charconv>

#include "kit/format.h"
#include "platform/core/model/event_text.h"

namespace CL {

namespace {

/// The bits of a number, negative ones in two's complement.
std::uint32_t Bits(std::int32_t number) { return static_cast<std::uint32_t>(number); }

}  // namespace

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
  zuna_core::WriteEventText(os, *this, values.append(factor, factor_end));
}

double TempoScale::value() const { return FloatValue(); }

}  // namespace CL
