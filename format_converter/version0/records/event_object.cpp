// The event record of the legacy formats: docs/format-0.md, "event_object".

#include "format_converter/version0/records/event_object.h"

#include <istream>
#include <ostream>

#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/records/internal/event_image.h"

namespace version0 {

EventObject::EventObject(std::istream& is) {
  is.read(reinterpret_cast<char*>(this), sizeof(*this));
  if constexpr (kSwapsTimes) *this = swapped(*this);
}

EventObject::EventObject(unsigned int new_delta_time, unsigned int new_abs_time,
                         unsigned char new_status_high, unsigned char new_data1, unsigned char new_data2,
                         unsigned char new_track_id)
    : delta_time(new_delta_time),
      abs_time(new_abs_time),
      status_high(new_status_high),
      data1(new_data1),
      data2(new_data2),
      track_id(new_track_id) {}

bool EventObject::operator==(const EventObject& b) const {
  if (abs_time != b.abs_time) throw Version0Error("EventObject abs_time not equal");
  if (status_high != b.status_high) throw Version0Error("EventObject status_high not equal");
  if (data1 != b.data1) throw Version0Error("EventObject data1 not equal");
  if (data2 != b.data2) throw Version0Error("EventObject data2 not equal");
  if (track_id != b.track_id) throw Version0Error("EventObject track_id not equal");
  return true;
}

bool EventObject::operator!=(const EventObject& b) const { return !(*this == b); }

bool EventObject::operator<(const EventObject& b) const {
  if (abs_time == b.abs_time && delta_time > b.delta_time) return true;
  if (abs_time > b.abs_time) return false;
  if (status_high > b.status_high) return false;
  if (data1 > b.data1) return false;
  return data2 < b.data2;
}

std::ostream& operator<<(std::ostream& os, const EventObject& event) {
  os << std::dec << "EventObject(" << event.delta_time << ", " << event.abs_time << ", ";
  os << std::hex << std::showbase << unsigned{event.status_high} << std::dec << std::noshowbase;
  return os << ", " << unsigned{event.data1} << ", " << unsigned{event.data2} << ", "
            << unsigned{event.track_id} << ")";
}

}  // namespace version0
