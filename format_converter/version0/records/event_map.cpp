// Reads and writes the events of a legacy song: docs/format-0.md, "song_data".

#include "format_converter/version0/records/internal/event_map.h"

#include <algorithm>
#include <array>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <vector>

#include "format_converter/version0/primitives/internal/primitives.h"
#include "format_converter/version0/records/internal/event_image.h"
#include "kit/stream_size.h"

namespace version0 {

namespace {

constexpr std::uint32_t kWindow = 512;    ///< events that are read at once
constexpr std::uint32_t kMany = 1 << 16;  ///< events beyond the size of a processor's first caches
constexpr std::size_t kTrackIds = 256;

/// The end of the events at `first` that belong to one track.
const EventObject* end_of_run(const EventObject* first, const EventObject* last) {
  const std::uint8_t id = first->track_id;
  return std::find_if(first, last, [id](const EventObject& event) { return event.track_id != id; });
}

using Window = std::array<EventObject, kWindow>;

/// Reads `count` events through `window` and calls `take_run(first, last)` for each run of events of one
/// track. Stops where the stream fails.
template <typename TakeRun>
void read_runs(std::istream& is, std::uint32_t count, Window& window, TakeRun take_run) {
  while (count > 0) {
    const std::uint32_t size = std::min(count, kWindow);
    if (!is.read(reinterpret_cast<char*>(window.data()),
                 static_cast<std::streamsize>(size * sizeof(EventObject)))) {
      return;
    }
    EventObject* const last = window.data() + size;
    if constexpr (kSwapsTimes) {
      std::transform(window.data(), last, window.data(),
                     [](const EventObject& event) { return swapped(event); });
    }
    for (const EventObject* first = window.data(); first != last;) {
      const EventObject* const end = end_of_run(first, last);
      take_run(first, end);
      first = end;
    }
    count -= size;
  }
}

/// Whether at least `count` events follow the read position. False when the stream cannot tell.
bool has_events(std::istream& is, std::uint32_t count) {
  return kit::BytesAhead(*is.rdbuf()) / static_cast<std::streamoff>(sizeof(EventObject)) >= count;
}

/// Counts the events of each track and reserves memory for exactly that many, so that no list is moved as it
/// grows. For many events, new memory costs more than reading them twice. Restores the read position.
void reserve(std::istream& is, std::uint32_t count, Window& window, EventMap& events) {
  const std::streamoff here = is.tellg();
  std::array<std::uint32_t, kTrackIds> sizes{};
  read_runs(is, count, window, [&](const EventObject* first, const EventObject* last) {
    sizes[first->track_id] += static_cast<std::uint32_t>(last - first);
  });
  is.seekg(here);
  for (std::size_t id = 0; id < kTrackIds; ++id) {
    if (sizes[id] > 0) events[static_cast<std::uint8_t>(id)].reserve(sizes[id]);
  }
}

void write_images(std::ostream& os, const EventObject* events, std::size_t count) {
  os.write(reinterpret_cast<const char*>(events), static_cast<std::streamsize>(count * sizeof(EventObject)));
}

void write_track(std::ostream& os, const std::vector<EventObject>& track) {
  if constexpr (kSwapsTimes) {
    for (const EventObject& event : track) {
      const EventObject image = swapped(event);
      write_images(os, &image, 1);
    }
  } else {
    write_images(os, track.data(), track.size());
  }
}

}  // namespace

EventMap read_events(std::istream& is) {
  const std::uint32_t count = get_u32(is);
  EventMap events;
  Window window;
  if (count >= kMany && has_events(is, count)) reserve(is, count, window, events);
  read_runs(is, count, window, [&](const EventObject* first, const EventObject* last) {
    std::vector<EventObject>& track = events[first->track_id];
    track.insert(track.end(), first, last);
  });
  return events;
}

void write_events(std::ostream& os, const EventMap& events) {
  std::uint32_t count = 0;
  for (const auto& [id, track] : events) count += static_cast<std::uint32_t>(track.size());
  put_u32(os, count);
  // The legacy format has always refused a song without events here, with this message.
  if (count == 0) throw std::out_of_range("vector");
  for (const auto& [id, track] : events) write_track(os, track);
}

}  // namespace version0
