#include "platform/core/model/event_text.h"

#include <ostream>

#include "codes/zuna_event_codes.h"

namespace zuna_core {

void WriteEventText(std::ostream& os, const cmn::ZunaEvent& event, const std::string& values) {
  os << codes::editNameByZunaEventCode.at(event.EventCode()) << '(' << values << ')';
  if (!event.label.empty()) os << " \"" << event.label << '"';
}

}  // namespace zuna_core
