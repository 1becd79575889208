#include "CL/point_events.h"

#include "kit/format.h"
#include "platform/core/model/event_text.h"

namespace CL {

PointEvent::PointEvent(std::uint32_t event_position, const std::string& event_label)
    : cmn::ZunaEvent(event_label), position(event_position) {}

std::uint32_t PointEvent::Position() const { return position; }

Caesura::Caesura(std::uint32_t event_position, const std::string& event_label)
    : PointEvent(event_position, event_label) {}

std::uint8_t Caesura::EventCode() const { return evt_code; }

void Caesura::WriteString(std::ostream& os) const {
  zuna_core::WriteEventText(
      os, *this,
      kit::format("%lu, %lu", static_cast<unsigned long>(position), static_cast<unsigned long>(second_word)));
}

Marker::Marker(std::uint32_t event_position, const std::string& event_label, const std::string& marker_text)
    : PointEvent(event_position, event_label), text(marker_text) {}

std::uint8_t Marker::EventCode() const { return evt_code; }

void Marker::WriteString(std::ostream& os) const {
  zuna_core::WriteEventText(os, *this, kit::format("%lu, ", static_cast<unsigned long>(position)) + text);
}

}  // namespace CL
