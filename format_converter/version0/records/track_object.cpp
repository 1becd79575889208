// The track record of the legacy formats: docs/format-0.md, "track_object".

#include "format_converter/version0/records/track_object.h"

#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

TrackObject::TrackObject(std::istream& is) : track_id(get_u8(is)), track_name(get_string(is)) {}

void TrackObject::write_binary(std::ostream& os) const {
  put_u8(os, track_id);
  put_string(os, track_name);
}

TrackObject::TrackObject(std::uint8_t new_track_id, const std::string& new_track_name)
    : track_id(new_track_id), track_name(new_track_name) {}

bool TrackObject::operator<(const TrackObject& b) const { return track_id < b.track_id; }

bool operator==(const TrackObject& a, const TrackObject& b) {
  if (a.track_id != b.track_id) throw Version0Error("track_id not equal");
  if (a.track_name != b.track_name) throw Version0Error("track_name not equal");
  return true;
}

bool operator!=(const TrackObject& a, const TrackObject& b) { return !(a == b); }

}  // namespace version0
