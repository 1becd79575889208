#include "format_converter/version0/event_map.h"

#include <algorithm>
#include <array>
#include <bit>
#include <istream>
#include <ostream>
#include <stdexcept>

#include "format_converter/version0/primitives.h"

namespace version0 {

// Events go to and from the file as they stand in memory.
static_assert(std::endian::native == std::endian::little,
              "a big-endian host has to swap the times of every event");

namespace {

constexpr std::uint32_t kWindow = 4096;  ///< events that are read at once
constexpr std::size_t kTrackIds = 256;

/// Reads `count` events through a window and calls `each_window(first, last)` for every window that came in
/// whole. Returns false where the stream failed before.
template <typename EachWindow>
bool read_windows(std::istream& is, std::uint32_t count, EachWindow each_window) {
  std::vector<EventObject> window(std::min(count, kWindow));
  while (count > 0) {
    const std::uint32_t size = std::min(count, kWindow);
    if (!is.read(reinterpret_cast<char*>(window.data()),
                 static_cast<std::streamsize>(size * sizeof(EventObject))))
      return false;
    each_window(window.data(), window.data() + size);
    count -= size;
  }
  return true;
}

/// How many bytes follow the read position, or 0 where the stream cannot tell.
std::streamoff bytes_ahead(std::istream& is) {
  std::streambuf& buffer = *is.rdbuf();
  const std::streamoff here = buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
  if (here < 0) return 0;
  const std::streamoff end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
  buffer.pubseekpos(here, std::ios_base::in);
  return std::max<std::streamoff>(end - here, 0);
}

/// Counts the events of each track and makes room for exactly so many, so that no list ever moves as it
/// grows: with millions of events, fresh memory costs more than reading them twice. Leaves the read position
/// where it was.
void reserve(std::istream& is, std::uint32_t count, EventMap& events) {
  const std::streamoff here = is.tellg();
  std::array<std::uint32_t, kTrackIds> sizes{};
  read_windows(is, count, [&](const EventObject* first, const EventObject* last) {
    for (; first != last; ++first) ++sizes[first->track_id];
  });
  is.seekg(here);
  for (std::size_t id = 0; id < kTrackIds; ++id) {
    if (sizes[id] > 0) events[static_cast<std::uint8_t>(id)].reserve(sizes[id]);
  }
}

}  // namespace

EventMap read_events(std::istream& is) {
  const std::uint32_t count = get_u32(is);
  EventMap events;
  if (bytes_ahead(is) / static_cast<std::streamoff>(sizeof(EventObject)) >= count) reserve(is, count, events);
  read_windows(is, count, [&](const EventObject* first, const EventObject* last) {
    while (first != last) {
      const std::uint8_t id = first->track_id;
      const auto* end =
          std::find_if(first, last, [id](const EventObject& event) { return event.track_id != id; });
      std::vector<EventObject>& track = events[id];
      track.insert(track.end(), first, end);
      first = end;
    }
  });
  return events;
}

void write_events(std::ostream& os, const EventMap& events) {
  std::uint32_t count = 0;
  for (const auto& [id, track] : events) count += static_cast<std::uint32_t>(track.size());
  put_u32(os, count);
  // The product has always refused a song without events here, in these words.
  if (count == 0) throw std::out_of_range("vector");
  for (const auto& [id, track] : events) {
    os.write(reinterpret_cast<const char*>(track.data()),
             static_cast<std::streamsize>(track.size() * sizeof(EventObject)));
  }
}

}  // namespace version0
