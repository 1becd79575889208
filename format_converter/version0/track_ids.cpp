#include "format_converter/version0/track_ids.h"

namespace version0 {

std::deque<unsigned char> get_non_drum_ids() {
  std::deque<unsigned char> ids;
  for (unsigned id = 1; id <= 255; ++id) {
    if ((id & 0x0F) != kDrumId) ids.push_back(static_cast<unsigned char>(id));
  }
  return ids;
}

}  // namespace version0
