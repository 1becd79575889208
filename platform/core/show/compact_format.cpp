#include "platform/core/show/compact_format.h"

#include <utility>

#include "platform/core/show/show_builder.h"

// Encoder and decoder of a record stand next to each other with their fields in the same order. Times are not
// among the fields of a list entry: the list states them, each as the difference from the one before, modulo
// 2^32. kMin… is the size of the smallest entry, time included.

namespace zuna_core {

namespace {

template <class Sink>
void EncodeText(const std::string& text, Sink& sink) {
  sink.Varint(text.size());
  sink.Bytes(text);
}

std::string DecodeText(ByteReader& in, const char* field) { return in.Text(in.Varint32(field), field); }

constexpr std::size_t kMinTempoSize = 1 + 1;

template <class Sink>
void EncodeEntry(const TL::Tempo& entry, Sink& sink) {
  sink.Varint(entry.microseconds);
}

void DecodeEntry(ByteReader& in, TL::Tempo& entry) { entry.microseconds = in.Varint32("microseconds"); }

constexpr std::size_t kMinBarsBeatsSize = 1 + 1 + 1;

template <class Sink>
void EncodeEntry(const TL::BarsBeats& entry, Sink& sink) {
  EncodeText(entry.bar_number(), sink);
  sink.Fixed(entry.tag, 1);
}

void DecodeEntry(ByteReader& in, TL::BarsBeats& entry) {
  if (const char* problem = SetBarNumber(entry, DecodeText(in, "bar number"))) in.Fail("bar number", problem);
  entry.tag = in.U8("tag");
}

constexpr std::size_t kMinKeySize = 1 + 1 + 1;

template <class Sink>
void EncodeEntry(const TL::Key& entry, Sink& sink) {
  sink.Varint(ZigZag(entry.key));
  sink.Varint(entry.mode);
}

void DecodeEntry(ByteReader& in, TL::Key& entry) {
  entry.key = static_cast<std::int16_t>(UnZigZag(in.Varint16("key")));
  entry.mode = in.Varint16("mode");
}

constexpr std::size_t kMinPageNumberSize = 1 + 1;

template <class Sink>
void EncodeEntry(const TL::PageNumber& entry, Sink& sink) {
  sink.Varint(entry.page);
}

void DecodeEntry(ByteReader& in, TL::PageNumber& entry) { entry.page = in.Varint32("page"); }

constexpr std::size_t kMinMeterSize = 1 + 1 + 1 + 1 + 1;

template <class Sink>
void EncodeEntry(const TL::Meter& entry, Sink& sink) {
  sink.Fixed(entry.numerator, 1);
  sink.Fixed(entry.denominator, 1);
  sink.Fixed(entry.clocks_per_click, 1);
  sink.Fixed(entry.notated_32_per_quarter, 1);
}

void DecodeEntry(ByteReader& in, TL::Meter& entry) {
  entry.numerator = in.U8("numerator");
  entry.denominator = in.U8("denominator");
  entry.clocks_per_click = in.U8("clocks per click");
  entry.notated_32_per_quarter = in.U8("notated 32nds per quarter");
}

template <class Entry, class Sink>
void EncodeList(const std::vector<Entry>& list, Sink& sink) {
  sink.Varint(list.size());
  std::uint32_t before = 0;
  for (const Entry& entry : list) {
    sink.Varint(static_cast<std::uint32_t>(entry.time - before));
    before = entry.time;
    EncodeEntry(entry, sink);
  }
}

template <class Entry>
void DecodeList(ByteReader& in, const char* name, std::size_t min_size, std::vector<Entry>& list) {
  list.resize(in.Entries(in.Varint32(name), min_size, name));
  in.place.list = name;
  std::uint32_t time = 0;
  for (in.place.index = 0; in.place.index < list.size(); ++in.place.index) {
    Entry& entry = list[in.place.index];
    time += in.Varint32("time");
    entry.time = time;
    DecodeEntry(in, entry);
  }
  in.place.list = nullptr;
}

template <class Sink>
void EncodeTimeline(const TL::Timeline& timeline, Sink& sink) {
  EncodeList(timeline.tempos, sink);
  EncodeList(timeline.bars_beats, sink);
  EncodeList(timeline.keys, sink);
  EncodeList(timeline.page_numbers, sink);
  EncodeList(timeline.meters, sink);
}

void DecodeTimeline(ByteReader& in, TL::Timeline& timeline) {
  DecodeList(in, "tempos", kMinTempoSize, timeline.tempos);
  DecodeList(in, "bars/beats", kMinBarsBeatsSize, timeline.bars_beats);
  DecodeList(in, "keys", kMinKeySize, timeline.keys);
  DecodeList(in, "page numbers", kMinPageNumberSize, timeline.page_numbers);
  DecodeList(in, "meters", kMinMeterSize, timeline.meters);
}

using Messages = std::vector<std::pair<std::uint32_t, std_midi::VoiceMessage>>;

// A message is one variable-length integer, twice the difference in time plus 1 where the status is that of
// the message before (running status), then the status where it is another one, then the data bytes. Before
// the first message, time and status are 0.
constexpr std::size_t kMinMessageSize = 1 + 2;
constexpr std::uint64_t kLargestStep = 0x1FFFFFFFF;  // 33 bits

template <class Sink>
void EncodeMessages(const Messages& messages, Sink& sink) {
  sink.Varint(messages.size());
  std::uint32_t before = 0;
  std::uint8_t running = 0;
  sink.Records(messages, [&](const Messages::value_type& entry) {
    const auto& [time, message] = entry;
    // Without branches, for the same reason as in PutVarint().
    const auto changed = static_cast<std::size_t>(message.status != running);
    const std::uint64_t step = std::uint64_t{static_cast<std::uint32_t>(time - before)} << 1;
    const std::uint64_t data = std::uint64_t{message.data1} | std::uint64_t{message.data2} << 8;
    before = time;
    running = message.status;
    return VarintRecord{step | (1 - changed), data << (8 * changed) | message.status * changed, 2 + changed};
  });
}

[[noreturn]] void FailMessage(ByteReader& in, std::size_t index, const char* at, const char* field,
                              const char* what) {
  in.place.index = index;
  in.MoveTo(at);
  in.Fail(field, what);
}

void DecodeMessages(ByteReader& in, Messages& messages) {
  const std::size_t count = in.Entries(in.Varint32("messages"), kMinMessageSize, "messages");
  messages.reserve(count);
  in.place.list = "messages";
  const char* next = in.next();
  const char* const end = in.end();
  std::uint32_t time = 0;
  std::uint8_t running = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const char* const begin = next;
    std::uint64_t step = 0;
    if (!GetVarint(next, end, step)) FailMessage(in, i, begin, "time", kNoVarint);
    if (step > kLargestStep) {
      FailMessage(in, i, begin, "time", "the difference in time is above 4294967295");
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
  in.place.list = nullptr;
}

/// The smallest track: its number, an empty name, the reserved field and no messages.
constexpr std::size_t kMinTrackSize = 1 + 1 + 1 + 1;

template <class Sink>
void EncodeTrack(const zuna_midi::VoiceTrack& track, Sink& sink) {
  sink.Varint(track.track_number);
  EncodeText(track.name, sink);
  sink.Varint(track.reserved);
  EncodeMessages(track.messages, sink);
}

std::shared_ptr<zuna_midi::VoiceTrack> DecodeTrack(ByteReader& in) {
  auto track = std::make_shared<zuna_midi::VoiceTrack>();
  track->track_number = in.Varint16("track number");
  in.place.voice = track->track_number;
  track->name = DecodeText(in, "name");
  track->reserved = in.Varint16("reserved field");
  DecodeMessages(in, track->messages);
  return track;
}

/// The smallest song: number and name, division, length, the counts of five lists and of no voices.
constexpr std::size_t kMinSongSize = 1 + 1 + 1 + 1 + 5 + 1;

template <class Sink>
void EncodeSong(const zuna_midi::SongData& song, Sink& sink) {
  EncodeText(song.song_number, sink);
  EncodeText(song.song_name, sink);
  sink.Varint(song.division);
  sink.Varint(song.song_length);
  EncodeTimeline(*song.timeline, sink);
  sink.Varint(song.voice_data->tracks().size());
  for (const auto& [number, track] : song.voice_data->tracks()) EncodeTrack(*track, sink);
}

std::shared_ptr<zuna_midi::SongData> DecodeSong(ByteReader& in) {
  auto song = std::make_shared<zuna_midi::SongData>(DecodeText(in, "song number"), "", 0, 0);
  in.place.song = song->song_number;
  song->song_name = DecodeText(in, "song name");
  song->division = in.Varint16("division");
  song->song_length = in.Varint32("song length");
  DecodeTimeline(in, *song->timeline);
  const std::size_t tracks = in.Entries(in.Varint32("voices"), kMinTrackSize, "voices");
  for (std::size_t i = 0; i < tracks; ++i) {
    if (!AddNewTrack(*song->voice_data, DecodeTrack(in))) in.Fail("track number", kDuplicateTrack);
    in.place.voice.reset();
  }
  return song;
}

template <class Sink>
void EncodeShow(const zuna_midi::ShowData& show, Sink& sink) {
  EncodeText(show.show_name, sink);
  sink.Varint(show.songs().size());
  for (const auto& [number, song] : show.songs()) EncodeSong(*song, sink);
}

}  // namespace

zuna_midi::ShowData DecodeCompactShow(ByteReader& in) {
  zuna_midi::ShowData show;
  show.show_name = DecodeText(in, "show name");
  const std::size_t songs = in.Entries(in.Varint32("songs"), kMinSongSize, "songs");
  for (std::size_t i = 0; i < songs; ++i) {
    if (!AddNewSong(show, DecodeSong(in))) in.Fail("song number", kDuplicateSong);
    in.place.song.reset();
  }
  in.ExpectEnd();
  return show;
}

void EncodeCompactShow(const zuna_midi::ShowData& show, ByteCounter& sink) { EncodeShow(show, sink); }
void EncodeCompactShow(const zuna_midi::ShowData& show, ByteWriter& sink) { EncodeShow(show, sink); }

}  // namespace zuna_core
