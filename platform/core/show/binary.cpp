// The body of a binary show file (docs/format-1.md). Messages, which are nearly all of it, have loops of
// their own; the fields of all records are in show/fields.h.

#include "platform/core/show/file.h"

#include <algorithm>

#include "platform/core/file/binary_field_reader.h"
#include "platform/core/file/binary_field_writer.h"
#include "platform/core/file/field_lister.h"
#include "platform/core/file/record_at.h"
#include "platform/core/show/fields.h"
#include "zuna_midi/show_records.h"

namespace zuna_core {

namespace {

using Messages = std::vector<std::pair<std::uint32_t, std_midi::VoiceMessage>>;

// In the fixed layout a message is its time and three bytes.
constexpr std::size_t kFixedMessageSize = 4 + 1 + 1 + 1;

template <typename Sink>
void PutFixedMessages(Sink& sink, const Messages& messages) {
  for (const auto& [time, message] : messages) {
    const std::uint64_t bytes = std::uint64_t{message.status} | std::uint64_t{message.data1} << 8 |
                                std::uint64_t{message.data2} << 16;
    sink.Fixed(time | bytes << 32, kFixedMessageSize);
  }
}

void TakeFixedMessages(ByteReader& in, std::string_view key, std::size_t count, Messages& messages) {
  const char* from = in.Take(count * kFixedMessageSize, key);
  for (std::size_t i = 0; i < count; ++i, from += kFixedMessageSize) {
    const auto byte = [from](int at) { return static_cast<unsigned char>(from[at]); };
    messages.emplace_back(static_cast<std::uint32_t>(GetFixed(from, 4)),
                          std_midi::VoiceMessage(byte(4), byte(5), byte(6)));
  }
}

// In the compact layout a message is one variable-length integer, twice the difference in time plus 1 where
// the status is that of the message before (running status), then the status where it is another one, then
// the data bytes. Before the first message, time and status are 0.
constexpr std::size_t kMinCompactMessageSize = 1 + 2;
constexpr std::uint64_t kLargestStep = 0x1FFFFFFFF;  // 33 bits

template <typename Sink>
void PutCompactMessages(Sink& sink, const Messages& messages) {
  std::uint32_t before = 0;
  std::uint8_t running = 0;
  sink.Records(messages, [&](const Messages::value_type& entry) {
    const auto& [time, message] = entry;
    // Without branches: where the status changes is hard to predict.
    const auto changed = static_cast<std::size_t>(message.status != running);
    const std::uint64_t step = std::uint64_t{static_cast<std::uint32_t>(time - before)} << 1;
    const std::uint64_t data = std::uint64_t{message.data1} | std::uint64_t{message.data2} << 8;
    before = time;
    running = message.status;
    return VarintRecord{step | (1 - changed), data << (8 * changed) | message.status * changed, 2 + changed};
  });
}

[[noreturn]] void FailMessage(ByteReader& in, std::size_t index, const char* at, const char* field,
                              const char* problem) {
  in.path.index = index;
  in.MoveTo(at);
  in.Fail(field, problem);
}

void TakeCompactMessages(ByteReader& in, std::size_t count, Messages& messages) {
  const char* next = in.next();
  const char* const end = in.end();
  std::uint32_t time = 0;
  std::uint8_t running = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const char* const begin = next;
    std::uint64_t step = 0;
    if (!GetVarint(next, end, step)) FailMessage(in, i, begin, "time", kNoVarint);
    if (step > kLargestStep) {
      FailMessage(in, i, begin, "time", "the difference in time is above the maximum, 4294967295");
    }
    const bool same_status = (step & 1) != 0;
    if (end - next < (same_status ? 2 : 1 + 2)) FailMessage(in, i, next, "data", "the message is cut off");
    if (!same_status) running = static_cast<std::uint8_t>(*next++);
    time += static_cast<std::uint32_t>(step >> 1);
    messages.emplace_back(time, std_midi::VoiceMessage(running, static_cast<unsigned char>(next[0]),
                                                       static_cast<unsigned char>(next[1])));
    next += 2;
  }
  in.MoveTo(next);
}

}  // namespace

template <>
struct BinaryMessages<Messages> {
  template <typename Sink>
  static void Put(Sink& sink, Layout layout, const Messages& messages) {
    if (layout == Layout::kCompact) {
      PutCompactMessages(sink, messages);
    } else {
      PutFixedMessages(sink, messages);
    }
  }

  /// The fewest bytes that a message takes.
  static std::size_t SmallestSize(Layout layout) {
    return layout == Layout::kCompact ? kMinCompactMessageSize : kFixedMessageSize;
  }

  static void Take(ByteReader& in, Layout layout, std::string_view key, std::uint32_t count,
                   Messages& messages) {
    messages.reserve(in.Entries(count, SmallestSize(layout), key));
    if (layout == Layout::kCompact) {
      in.path.list = key;
      TakeCompactMessages(in, count, messages);
      in.path.list = {};
    } else {
      TakeFixedMessages(in, key, count, messages);
    }
  }

  /// How many of `messages` stand before the first one that is no channel message of MIDI. Program Change and
  /// Channel Pressure have one data byte, and the other may be any.
  static std::size_t CountBeforeOthers(const Messages& messages) {
    const auto is_other = [](const Messages::value_type& entry) {
      const std_midi::VoiceMessage& message = entry.second;
      const bool has_second = (message.status & 0xE0) != 0xC0;
      return message.status < 0x80 || message.status > 0xEF || message.data1 > 0x7F ||
             (has_second && message.data2 > 0x7F);
    };
    return static_cast<std::size_t>(std::find_if(messages.begin(), messages.end(), is_other) -
                                    messages.begin());
  }

  /// Where the first `count` messages end that were taken from `next` on.
  static const char* EndOf(const char* next, const char* end, Layout layout, std::size_t count) {
    if (layout == Layout::kFixed) return next + count * kFixedMessageSize;
    for (; count > 0; --count) {
      std::uint64_t step = 0;
      GetVarint(next, end, step);
      next += (step & 1) != 0 ? 2 : 1 + 2;
    }
    return next;
  }

  /// Places `messages`, which were taken from the beginning of `bytes`.
  static void Place(cmn::FieldPlacer& placer, Layout layout, std::string_view key, std::string_view bytes,
                    const Messages& messages) {
    const char* next = bytes.data();
    const char* const end = next + bytes.size();
    for (std::size_t i = 0; i < messages.size(); ++i) {
      const auto& [time, message] = messages[i];
      std::uint64_t step = 0;
      const char* const begin = next;
      if (layout == Layout::kCompact) {
        GetVarint(next, end, step);
      } else {
        next += 4;
      }
      const bool has_status = (step & 1) == 0;
      placer.Enter(key, i);
      placer.Place(static_cast<std::size_t>(next - begin), "time", time);
      if (has_status) placer.Place(1, "status", std::uint32_t{message.status});
      placer.Place(1, "data1", std::uint32_t{message.data1});
      placer.Place(1, "data2", std::uint32_t{message.data2});
      placer.Leave();
      next += 2 + static_cast<std::size_t>(has_status);
    }
  }
};

void EncodeShow(const zuna_midi::ShowData& show, cmn::FileVersion version, ByteCounter& sink) {
  WriteBinaryFields(sink, version, show);
}
void EncodeShow(const zuna_midi::ShowData& show, cmn::FileVersion version, ByteWriter& sink) {
  WriteBinaryFields(sink, version, show);
}

zuna_midi::ShowData DecodeShow(ByteReader& in, cmn::FileVersion version) {
  zuna_midi::ShowData show;
  ReadBinaryFields(in, version, show);
  return show;
}

}  // namespace zuna_core

namespace zuna_midi {

ShowHead ReadShowHead(std::string_view file, std::size_t& offset, cmn::FileVersion version) {
  ShowHead head;
  zuna_core::ReadHeadAt(file, offset, version, head.show, head.songs);
  return head;
}

std::shared_ptr<SongData> ReadSong(std::string_view file, std::size_t& offset, cmn::FileVersion version) {
  auto song = zuna_core::ChildRecords<ShowData>::New();
  zuna_core::ReadRecordAt(file, offset, version, *song);
  return song;
}

std::shared_ptr<SongData> ReadBeginningOfSong(std::string_view file, std::size_t& offset,
                                              cmn::FileVersion version) {
  auto song = zuna_core::ChildRecords<ShowData>::New();
  zuna_core::ReadBeginningAt(file, offset, version, *song);
  return song;
}

void ListFields(std::string_view file, const cmn::TakeField& take) {
  zuna_core::PlaceFields<ShowData>(cmn::FileKind::kShow, file, take);
}

}  // namespace zuna_midi
