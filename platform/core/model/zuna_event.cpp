#include "cmn/zuna_event.h"

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
