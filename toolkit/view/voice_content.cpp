// Reads what a voice has, in units of the picture, and what only one of two voices has.
#include "toolkit/view/internal/voice_content.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "toolkit/comparison/internal/message_entries.h"
#include "toolkit/comparison/internal/notes.h"
#include "toolkit/smf/file.h"
#include "toolkit/view/internal/marks.h"

namespace zuna_toolkit {

namespace {

constexpr int kChannels = 16;

/// Reads the messages of a voice.
class VoiceReader {
 public:
  explicit VoiceReader(const Scale& scale) : scale_(scale) {}

  VoiceContent Read(const zuna_midi::VoiceTrack& voice) {
    for (const auto& [tick, message] : voice.messages) {
      if (smf::IsChannelMessage(message)) Take(tick, message);
    }
    for (std::size_t key = 0; key < begun_.size(); ++key) {
      if (begun_.at(key) >= 0) End(key, scale_.X(scale_.ticks));
    }
    return std::move(content_);
  }

 private:
  void Take(std::uint32_t tick, const std_midi::VoiceMessage& message) {
    const auto channel = static_cast<std::size_t>(message.status & smf::kChannelMask);
    const std::uint8_t kind = message.status & smf::kKindMask;
    const int x = scale_.X(tick);
    content_.channels.insert(static_cast<int>(channel) + 1);
    if (kind == smf::kNoteOn || kind == smf::kNoteOff) {
      const std::size_t key = channel * kKeys + message.data1;
      if (begun_.at(key) >= 0) End(key, x);
      if (kind == smf::kNoteOn && message.data2 > 0) begun_.at(key) = x;
    } else if (kind == smf::kProgramChange) {
      if (content_.programs.size() < kMostOfAKind) content_.programs.push_back({tick, message.data1 + 1});
    } else if (content_.controls.empty() || content_.controls.back() != x) {
      content_.controls.push_back(x);
    }
  }

  void End(std::size_t key, int x) {
    const int number = static_cast<int>(key % kKeys);
    content_.notes.push_back({begun_.at(key), std::max(x, begun_.at(key) + 1), number});
    content_.lowest = std::min(content_.lowest, number);
    content_.highest = std::max(content_.highest, number);
    begun_.at(key) = -1;
  }

  const Scale& scale_;
  VoiceContent content_;
  std::array<int, std::size_t{kKeys}* kChannels> begun_ = [] {  ///< where a key was pressed; -1 where not
    std::array<int, std::size_t{kKeys} * kChannels> none{};
    none.fill(-1);
    return none;
  }();
};

/// Collects what only one of two voices has.
class MarkCollector {
 public:
  explicit MarkCollector(const Scale& scale) : scale_(scale) {}

  VoiceMarks Collect(std::span<const TimedMessage> here, std::span<const TimedMessage> there) {
    VoiceParts here_parts = PartsOf({here.begin(), here.end()});
    VoiceParts there_parts = PartsOf({there.begin(), there.end()});
    AddOthers(here_parts.others, there_parts.others);
    const NoteComparison notes = CompareNotes(std::move(here_parts.notes), std::move(there_parts.notes));
    for (const auto* pairs :
         {&notes.moved, &notes.changed, &notes.transposed, &notes.dropped, &notes.added}) {
      for (const NotePair& pair : *pairs) Add(pair);
    }
    return std::move(marks_);
  }

 private:
  void Add(const NotePair& pair) {
    if (pair.before) AddNote(*pair.before, marks_.here);
    if (pair.after) AddNote(*pair.after, marks_.there);
  }

  void AddNote(const Note& note, MarkedContent& content) const {
    const std::uint64_t end = std::min<std::uint64_t>(std::uint64_t{note.tick} + note.length, scale_.ticks);
    const int x = scale_.X(note.tick);
    const int end_x = scale_.X(static_cast<std::uint32_t>(end));
    content.notes.push_back({x, std::max(end_x, x + 1), note.pitch});
  }

  void AddOthers(const std::vector<TimedMessage>& here, const std::vector<TimedMessage>& there) {
    const Marks<TimedMessage> marks = MarksOf(here, &there);
    for (std::size_t i = 0; i < here.size(); ++i) {
      if (marks.only_here[i]) AddControl(here[i], marks_.here);
    }
    for (const TimedMessage* message : marks.only_there) AddControl(*message, marks_.there);
  }

  void AddControl(const TimedMessage& message, MarkedContent& content) const {
    const int x = scale_.X(message.first);
    if (content.controls.empty() || content.controls.back() != x) content.controls.push_back(x);
  }

  const Scale& scale_;
  VoiceMarks marks_;
};

}  // namespace

VoiceContent ContentOf(const zuna_midi::VoiceTrack& voice, const Scale& scale) {
  return VoiceReader(scale).Read(voice);
}

VoiceMarks MarksOfVoices(const VoicePair& pair, const Scale& scale) {
  std::span<const TimedMessage> here;
  if (pair.before != nullptr) here = pair.before->messages;
  std::span<const TimedMessage> there;
  if (pair.after != nullptr) there = pair.after->messages;
  there = there.subspan(std::min(pair.first_message, there.size()));
  there = there.first(std::min(pair.message_count, there.size()));
  if (std::equal(here.begin(), here.end(), there.begin(), there.end(), SameButChannel)) return {};
  return MarkCollector(scale).Collect(here, there);
}

}  // namespace zuna_toolkit
