// The events of a song of a legacy show as bytes that may be damaged (docs/format-0.md, "event_object").
#include "toolkit/rescue/internal/legacy_events.h"

#include <algorithm>

#include "toolkit/rescue/internal/record_bytes.h"
#include "toolkit/smf/file.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kTimeOffset = 4;  // in an event
constexpr std::size_t kStatusOffset = 8;
constexpr std::size_t kVoiceOffset = 11;
constexpr std::size_t kEventsThatFollow = 3;  // after damage, so that other bytes are not taken for an event

/// The status of an event has no channel.
bool IsMessage(const std_midi::VoiceMessage& message) {
  return (message.status & smf::kChannelMask) == 0 && smf::IsChannelMessage(message);
}

/// Whether the 12 bytes at `at`, which are there, are an event that a writer may have written.
bool IsEventAt(std::string_view bytes, std::size_t at, std::string_view voices) {
  const auto byte = [&](std::size_t offset) { return static_cast<unsigned char>(bytes[at + offset]); };
  return IsMessage({byte(kStatusOffset), byte(kStatusOffset + 1), byte(kStatusOffset + 2)}) &&
         (voices.empty() || voices.find(bytes[at + kVoiceOffset]) != std::string_view::npos);
}

/// Whether the event at `at` and the one after it are of one voice.
bool AreOfOneVoice(std::string_view bytes, std::size_t at) {
  return bytes[at + kVoiceOffset] == bytes[at + kEventSize + kVoiceOffset];
}

/// Whether an event fits after one at time `before` in its track, or begins one of several voices there.
bool FitsAfter(std::uint32_t before, std::uint32_t delta, std::uint32_t time) {
  return time == before + delta || time == delta;
}

/// Whether the times of the event at `at` and of the one after it fit, which are of one voice.
bool TimesFit(std::string_view bytes, std::size_t at) {
  const std::uint32_t time = RecordCursor(bytes, at + kTimeOffset).Number(4);
  RecordCursor next(bytes, at + kEventSize);
  const std::uint32_t delta = next.Number(4);
  return FitsAfter(time, delta, next.Number(4));
}

/// Whether events go on at `at`: three of them, or as many as there are up to the end.
bool GoesOnAt(std::string_view bytes, std::size_t at, std::string_view voices) {
  for (std::size_t count = 0; count < kEventsThatFollow; ++count, at += kEventSize) {
    if (count > 0 && at == bytes.size()) return true;
    if (bytes.size() - at < kEventSize || !IsEventAt(bytes, at, voices)) return false;
    if (count > 0 && AreOfOneVoice(bytes, at - kEventSize) && !TimesFit(bytes, at - kEventSize)) return false;
  }
  return true;
}

/// Whether events go on at `at`, and the times of the first two show that this is where one begins.
bool CertainlyGoesOnAt(std::string_view bytes, std::size_t at, std::string_view voices) {
  return bytes.size() - at >= 2 * kEventSize && GoesOnAt(bytes, at, voices) && AreOfOneVoice(bytes, at);
}

}  // namespace

std::string VoicesOf(std::string_view tracks) {
  std::string voices;
  RecordCursor in(tracks, 0);
  for (std::uint32_t left = in.Number(1); left > 0; --left) {
    voices += in.Take(1);
    in.Text();
  }
  return voices;
}

std::size_t CountEventsBack(std::string_view bytes) {
  std::size_t count = 0;
  while (bytes.size() >= kEventSize && IsEventAt(bytes, bytes.size() - kEventSize, "")) {
    bytes.remove_suffix(kEventSize);
    ++count;
  }
  return count;
}

MendedEvents MendEvents(std::string_view bytes, std::size_t begin, std::string_view voices,
                        std::size_t most) {
  MendedEvents mended;
  mended.end = begin;
  std::size_t at = begin;
  while (mended.bytes.size() / kEventSize < most && at + kEventSize <= bytes.size()) {
    const bool is_next = at == mended.end;
    const bool is_event = is_next           ? IsEventAt(bytes, at, voices)
                          : at < mended.end ? CertainlyGoesOnAt(bytes, at, voices)
                                            : GoesOnAt(bytes, at, voices);
    if (is_event) {
      if (at < mended.end) {  // a byte is missing in the last event, which has one of the next
        mended.bytes.resize(mended.bytes.size() - kEventSize);
        mended.end -= kEventSize;
      }
      if (at > mended.end) mended.unread.push_back({mended.end, at});
      mended.bytes += bytes.substr(at, kEventSize);
      at += kEventSize;
      mended.end = at;
    } else if (is_next && !mended.bytes.empty()) {
      at -= kEventSize - 1;
    } else if (++at == mended.end) {
      ++at;  // no event begins there
    }
  }
  return mended;
}

std::string OddEventsRemark(std::size_t count) {
  return Counted(count, "event has", "events have") + " bytes that no MIDI message has";
}

std::vector<std::string> EventRemarks(const version0::SongData& song) {
  std::size_t odd = 0;        // events that are no message
  std::size_t displaced = 0;  // events whose times do not fit
  for (const auto& [id, events] : song.events) {
    std::uint32_t time = 0;
    for (const version0::EventObject& event : events) {
      if (!IsMessage({event.status_high, event.data1, event.data2})) ++odd;
      if (!FitsAfter(time, event.delta_time, event.abs_time)) ++displaced;
      time = event.abs_time;
    }
  }
  std::vector<std::string> remarks;
  if (odd > 0) {
    remarks.push_back(OddEventsRemark(odd));
  }
  if (displaced > 0) {
    remarks.push_back(Counted(displaced, "event has", "events have") +
                      " another delta time than its time and that of the event before it give");
  }
  return remarks;
}

}  // namespace zuna_toolkit
