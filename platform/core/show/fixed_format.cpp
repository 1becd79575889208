#include "platform/core/show/fixed_format.h"

#include <utility>

#include "platform/core/show/show_builder.h"

// Encoder and decoder of a record stand next to each other with their fields in the same order. kSize of a
// list entry is the sum of its fields.

namespace zuna_core {

namespace {

constexpr std::size_t kCountSize = 4;

template <class Sink>
void EncodeText(const std::string& text, Sink& sink) {
  sink.Fixed(text.size(), kCountSize);
  sink.Bytes(text);
}

std::string DecodeText(ByteReader& in, const char* field) { return in.Text(in.U32(field), field); }

constexpr std::size_t kTempoSize = 4 + 4;

template <class Sink>
void EncodeEntry(const TL::Tempo& entry, Sink& sink) {
  sink.Fixed(entry.time, 4);
  sink.Fixed(entry.microseconds, 4);
}

void DecodeEntry(ByteReader& in, TL::Tempo& entry) {
  entry.time = in.U32("time");
  entry.microseconds = in.U32("microseconds");
}

constexpr std::size_t kBarNumberSize = 8;
constexpr std::size_t kBarsBeatsSize = 4 + kBarNumberSize + 1;

template <class Sink>
void EncodeEntry(const TL::BarsBeats& entry, Sink& sink) {
  std::string text(entry.bar_number());
  text.resize(kBarNumberSize);
  sink.Fixed(entry.time, 4);
  sink.Bytes(text);
  sink.Fixed(entry.tag, 1);
}

void DecodeEntry(ByteReader& in, TL::BarsBeats& entry) {
  entry.time = in.U32("time");
  std::string text = in.Text(kBarNumberSize, "bar number");
  const std::size_t length = text.find('\0');
  if (length == std::string::npos || text.find_first_not_of('\0', length) != std::string::npos) {
    in.Fail("bar number", "its text does not end with zero bytes only");
  }
  text.resize(length);
  entry.bar_number(text);
  entry.tag = in.U8("tag");
}

constexpr std::size_t kKeySize = 4 + 2 + 2;

template <class Sink>
void EncodeEntry(const TL::Key& entry, Sink& sink) {
  sink.Fixed(entry.time, 4);
  sink.Fixed(static_cast<std::uint16_t>(entry.key), 2);
  sink.Fixed(entry.mode, 2);
}

void DecodeEntry(ByteReader& in, TL::Key& entry) {
  entry.time = in.U32("time");
  entry.key = static_cast<std::int16_t>(in.U16("key"));
  entry.mode = in.U16("mode");
}

constexpr std::size_t kPageNumberSize = 4 + 4;

template <class Sink>
void EncodeEntry(const TL::PageNumber& entry, Sink& sink) {
  sink.Fixed(entry.time, 4);
  sink.Fixed(entry.page, 4);
}

void DecodeEntry(ByteReader& in, TL::PageNumber& entry) {
  entry.time = in.U32("time");
  entry.page = in.U32("page");
}

constexpr std::size_t kMeterSize = 4 + 1 + 1 + 1 + 1;

template <class Sink>
void EncodeEntry(const TL::Meter& entry, Sink& sink) {
  sink.Fixed(entry.time, 4);
  sink.Fixed(entry.numerator, 1);
  sink.Fixed(entry.denominator, 1);
  sink.Fixed(entry.clocks_per_click, 1);
  sink.Fixed(entry.notated_32_per_quarter, 1);
}

void DecodeEntry(ByteReader& in, TL::Meter& entry) {
  entry.time = in.U32("time");
  entry.numerator = in.U8("numerator");
  entry.denominator = in.U8("denominator");
  entry.clocks_per_click = in.U8("clocks per click");
  entry.notated_32_per_quarter = in.U8("notated 32nds per quarter");
}

template <class Entry, class Sink>
void EncodeList(const std::vector<Entry>& list, Sink& sink) {
  sink.Fixed(list.size(), kCountSize);
  for (const Entry& entry : list) EncodeEntry(entry, sink);
}

template <class Entry>
void DecodeList(ByteReader& in, const char* name, std::size_t entry_size, std::vector<Entry>& list) {
  list.resize(in.Entries(in.U32(name), entry_size, name));
  in.place.list = name;
  for (in.place.index = 0; in.place.index < list.size(); ++in.place.index) {
    DecodeEntry(in, list[in.place.index]);
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
  DecodeList(in, "tempos", kTempoSize, timeline.tempos);
  DecodeList(in, "bars/beats", kBarsBeatsSize, timeline.bars_beats);
  DecodeList(in, "keys", kKeySize, timeline.keys);
  DecodeList(in, "page numbers", kPageNumberSize, timeline.page_numbers);
  DecodeList(in, "meters", kMeterSize, timeline.meters);
}

constexpr std::size_t kMessageSize = 4 + 1 + 1 + 1;

template <class Sink>
void EncodeTrack(const zuna_midi::VoiceTrack& track, Sink& sink) {
  sink.Fixed(track.track_number, 2);
  EncodeText(track.name, sink);
  sink.Fixed(track.reserved, 2);
  sink.Fixed(track.messages.size(), kCountSize);
  for (const auto& [time, message] : track.messages) {
    const std::uint64_t bytes = std::uint64_t{message.status} | std::uint64_t{message.data1} << 8 |
                                std::uint64_t{message.data2} << 16;
    sink.Fixed(time | bytes << 32, kMessageSize);
  }
}

std::shared_ptr<zuna_midi::VoiceTrack> DecodeTrack(ByteReader& in) {
  auto track = std::make_shared<zuna_midi::VoiceTrack>();
  track->track_number = in.U16("track number");
  in.place.voice = track->track_number;
  track->name = DecodeText(in, "name");
  track->reserved = in.U16("reserved field");
  const std::size_t count = in.Entries(in.U32("messages"), kMessageSize, "messages");
  const char* from = in.Take(count * kMessageSize, "messages");
  track->messages.reserve(count);
  for (std::size_t i = 0; i < count; ++i, from += kMessageSize) {
    const auto byte = [from](int at) { return static_cast<unsigned char>(from[at]); };
    track->messages.emplace_back(static_cast<std::uint32_t>(GetFixed(from, 4)),
                                 std_midi::VoiceMessage(byte(4), byte(5), byte(6)));
  }
  return track;
}

/// The smallest track: its number, an empty name, the reserved field and no messages.
constexpr std::size_t kMinTrackSize = 2 + kCountSize + 2 + kCountSize;

template <class Sink>
void EncodeSong(const zuna_midi::SongData& song, Sink& sink) {
  EncodeText(song.song_number, sink);
  EncodeText(song.song_name, sink);
  sink.Fixed(song.division, 2);
  sink.Fixed(song.song_length, 4);
  EncodeTimeline(*song.timeline, sink);
  sink.Fixed(song.voice_data->tracks().size(), kCountSize);
  for (const auto& [number, track] : song.voice_data->tracks()) EncodeTrack(*track, sink);
}

std::shared_ptr<zuna_midi::SongData> DecodeSong(ByteReader& in) {
  auto song = std::make_shared<zuna_midi::SongData>(DecodeText(in, "song number"), "", 0, 0);
  in.place.song = song->song_number;
  song->song_name = DecodeText(in, "song name");
  song->division = in.U16("division");
  song->song_length = in.U32("song length");
  DecodeTimeline(in, *song->timeline);
  const std::size_t tracks = in.Entries(in.U32("voices"), kMinTrackSize, "voices");
  for (std::size_t i = 0; i < tracks; ++i) {
    if (!AddNewTrack(*song->voice_data, DecodeTrack(in))) in.Fail("track number", kDuplicateTrack);
    in.place.voice.reset();
  }
  return song;
}

/// The smallest song: number and name, division, length, the counts of five lists and of no voices.
constexpr std::size_t kMinSongSize = kCountSize + kCountSize + 2 + 4 + 5 * kCountSize + kCountSize;

template <class Sink>
void EncodeShow(const zuna_midi::ShowData& show, Sink& sink) {
  EncodeText(show.show_name, sink);
  sink.Fixed(show.songs().size(), kCountSize);
  for (const auto& [number, song] : show.songs()) EncodeSong(*song, sink);
}

}  // namespace

zuna_midi::ShowData DecodeFixedShow(ByteReader& in) {
  zuna_midi::ShowData show;
  show.show_name = DecodeText(in, "show name");
  const std::size_t songs = in.Entries(in.U32("songs"), kMinSongSize, "songs");
  for (std::size_t i = 0; i < songs; ++i) {
    if (!AddNewSong(show, DecodeSong(in))) in.Fail("song number", kDuplicateSong);
    in.place.song.reset();
  }
  in.ExpectEnd();
  return show;
}

void EncodeFixedShow(const zuna_midi::ShowData& show, ByteCounter& sink) { EncodeShow(show, sink); }
void EncodeFixedShow(const zuna_midi::ShowData& show, ByteWriter& sink) { EncodeShow(show, sink); }

}  // namespace zuna_core
