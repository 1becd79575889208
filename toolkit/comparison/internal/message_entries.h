// How the messages of a voice are compared and described.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <tuple>

#include "toolkit/comparison/internal/list_comparison.h"
#include "toolkit/comparison/internal/notes.h"
#include "toolkit/smf/file.h"

namespace zuna_toolkit {

template <>
struct EntryTraits<TimedMessage> {
  static std::uint32_t Tick(const TimedMessage& message) { return message.first; }
  static auto Values(const TimedMessage& message) {
    return std::tuple(message.second.status, message.second.data1, message.second.data2);
  }
  static std::string Text(const TimedMessage& message) {
    std::ostringstream text;
    text.exceptions(std::ios_base::badbit);  // it would drop what it has no memory for
    message.second.WriteString(text);
    return text.str();
  }
};

/// Whether two messages are the same but for their channel.
inline bool SameButChannel(const TimedMessage& a, const TimedMessage& b) {
  return a.first == b.first && a.second.data1 == b.second.data1 && a.second.data2 == b.second.data2 &&
         (a.second.status & smf::kKindMask) == (b.second.status & smf::kKindMask);
}

}  // namespace zuna_toolkit
