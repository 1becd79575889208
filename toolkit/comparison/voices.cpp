// Compares the voices of two songs.
#include "toolkit/comparison/internal/voices.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "kit/utf8.h"
#include "toolkit/comparison/internal/list_comparison.h"
#include "toolkit/comparison/internal/message_entries.h"
#include "toolkit/comparison/internal/notes.h"
#include "toolkit/smf/file.h"

namespace zuna_toolkit {

namespace {

std::string VoiceText(const zuna_midi::VoiceTrack& voice) {
  return "voice " + std::to_string(voice.track_number) + " \"" + voice.name + '"';
}

/// The same with the beginning of a long name, for what stands in every difference of the voice.
std::string ShortText(const zuna_midi::VoiceTrack& voice) {
  constexpr std::size_t kMaxName = 64;
  const std::string number = "voice " + std::to_string(voice.track_number) + " \"";
  if (voice.name.size() <= kMaxName) return number + voice.name + '"';
  return number + std::string(kit::CutUtf8(voice.name, kMaxName)) + "...\"";
}

/// How the channel of a message changes, as both low nibbles.
unsigned ChannelChange(const TimedMessage& before, const TimedMessage& after) {
  return (before.second.status & 0x0FU) << 4 | (after.second.status & 0x0FU);
}

std::string ChannelText(const TimedMessage& message) {
  return "channel " + std::to_string((message.second.status & smf::kChannelMask) + 1);
}

/// Compares the two voices of one pair.
class VoiceComparison {
 public:
  VoiceComparison(const VoicePair& pair, const SongDifferences& differences)
      : pair_(pair), before_(*pair.before), after_(*pair.after), differences_(differences) {}

  void Compare() {
    const bool are_losses = differences_.are_losses();
    if (before_.track_number != after_.track_number) {
      Add(are_losses ? Subject::kVoice : Subject::kVoiceNumber,
          are_losses ? Action::kRenumbered : Action::kChanged, VoiceText(before_),
          "voice " + std::to_string(after_.track_number));
    }
    if (before_.reserved != after_.reserved) {
      Add(Subject::kReservedField, are_losses ? Action::kDefaulted : Action::kChanged,
          std::to_string(before_.reserved), std::to_string(after_.reserved));
    }
    if (pair_.merged) Add(Subject::kVoice, Action::kMerged, VoiceText(before_), VoiceText(after_));
    if (before_.name != after_.name) {
      Add(Subject::kVoiceName, are_losses ? Action::kReplaced : Action::kChanged, before_.name, after_.name);
    }
    CompareMessages();
  }

 private:
  using Messages = std::span<const TimedMessage>;

  void CompareMessages() {
    Messages kept(after_.messages);
    kept = kept.subspan(std::min(pair_.first_message, kept.size()));
    kept = kept.first(std::min(pair_.message_count, kept.size()));
    const Messages all(before_.messages);
    if (std::equal(all.begin(), all.end(), kept.begin(), kept.end(), SameButChannel)) {
      AddChannelChanges(kept);
    } else if (differences_.are_losses()) {
      AddMessageChanges({kept.begin(), kept.end()});
    } else {
      AddNoteChanges();
    }
  }

  /// One difference for every run of messages whose channel changes in the same way.
  void AddChannelChanges(Messages kept) {
    const Messages all(before_.messages);
    std::size_t i = 0;
    while (i < all.size()) {
      const unsigned change = ChannelChange(all[i], kept[i]);
      std::size_t end = i + 1;
      while (end < all.size() && ChannelChange(all[end], kept[end]) == change) ++end;
      if (all[i].second.status != kept[i].second.status) {
        Difference difference = At(i, all[i].first);
        difference.subject = Subject::kMessageChannel;
        if (differences_.are_losses()) {
          difference.action = Action::kRenumbered;
          difference.before = "status " + std::to_string(all[i].second.status);
          difference.after = std::to_string(kept[i].second.status);
        } else {
          difference.before = ChannelText(all[i]);
          difference.after = ChannelText(kept[i]);
        }
        difference.count = end - i;
        differences_.Add(std::move(difference));
      }
      i = end;
    }
  }

  void AddMessageChanges(const std::vector<TimedMessage>& kept) {
    const ListComparison<TimedMessage> comparison(before_.messages, kept);
    for (const EntryPair<TimedMessage>& pair : comparison.pairs()) AddMessage(pair);
    if (comparison.reordered()) AddReordering();
  }

  /// Notes and other messages, each apart.
  void AddNoteChanges() {
    VoiceParts parts = PartsOf(before_.messages);
    VoiceParts after_parts = PartsOf(after_.messages);
    const bool same_notes = AddNotes(CompareNotes(std::move(parts.notes), std::move(after_parts.notes)));
    const ListComparison<TimedMessage> others(parts.others, after_parts.others);
    for (EntryPair<TimedMessage> pair : others.pairs()) {
      if (pair.before.entry != nullptr) pair.before.index = parts.places[pair.before.index];
      if (pair.after.entry != nullptr) pair.after.index = after_parts.places[pair.after.index];
      AddMessage(pair);
    }
    if (others.reordered() || (same_notes && others.pairs().empty())) AddReordering();
  }

  /// Returns whether there are none.
  bool AddNotes(const NoteComparison& notes) {
    const auto add = [&](const std::vector<NotePair>& pairs, Action action) {
      for (const NotePair& pair : pairs) AddNote(pair, action);
    };
    if (notes.in_parts) {
      Add(Subject::kVoice, Action::kRewritten, VoiceText(before_), VoiceText(after_));
    }
    add(notes.transposed, Action::kChanged);
    add(notes.moved, Action::kMoved);
    add(notes.changed, Action::kChanged);
    add(notes.dropped, Action::kDropped);
    add(notes.added, Action::kAdded);
    return notes.empty();
  }

  void AddNote(const NotePair& pair, Action action) {
    const Note& shown = pair.before ? *pair.before : *pair.after;
    Difference difference = At(shown.index, shown.tick);
    difference.subject = Subject::kNote;
    difference.action = action;
    if (pair.before) difference.before = NoteText(*pair.before, pair.after ? &*pair.after : nullptr);
    if (pair.after) difference.after = NoteText(*pair.after, pair.before ? &*pair.before : nullptr);
    if (pair.before && pair.after) {
      difference.place.after_tick = pair.after->tick;
      difference.changes = ChangesOfNote(*pair.before, *pair.after);
    }
    differences_.Add(std::move(difference));
  }

  void AddMessage(const EntryPair<TimedMessage>& pair) {
    Difference difference = EntryDifference(Subject::kMessage, "messages", pair);
    difference.place.voice = before_.track_number;
    difference.where = ShortText(before_);
    differences_.Add(std::move(difference));
  }

  void AddReordering() {
    Difference difference = At(0, std::nullopt);
    difference.subject = Subject::kMessage;
    difference.action = Action::kReordered;
    differences_.Add(std::move(difference));
  }

  /// A difference in the messages.
  Difference At(std::size_t index, std::optional<std::uint32_t> tick) const {
    Difference difference;
    difference.place.list = "messages";
    difference.place.index = index;
    difference.place.tick = tick;
    difference.place.voice = before_.track_number;
    difference.where = ShortText(before_);
    return difference;
  }

  void Add(Subject subject, Action action, std::string before, std::string after) const {
    Difference difference;
    difference.subject = subject;
    difference.action = action;
    difference.place.list = "voices";
    difference.place.voice = before_.track_number;
    difference.where = ShortText(before_);
    difference.before = std::move(before);
    difference.after = std::move(after);
    differences_.Add(std::move(difference));
  }

  const VoicePair& pair_;
  const zuna_midi::VoiceTrack& before_;
  const zuna_midi::VoiceTrack& after_;
  const SongDifferences& differences_;
};

void AddWholeVoice(const zuna_midi::VoiceTrack& voice, Action action, const SongDifferences& differences) {
  Difference difference;
  difference.subject = Subject::kVoice;
  difference.action = action;
  difference.place.list = "voices";
  difference.place.voice = voice.track_number;
  difference.where = ShortText(voice);
  if (action == Action::kAdded) {
    difference.after = VoiceText(voice);
  } else {
    difference.before = VoiceText(voice);
  }
  differences.Add(std::move(difference));
}

}  // namespace

void CompareVoices(const std::vector<VoicePair>& pairs, const SongDifferences& differences) {
  for (const VoicePair& pair : pairs) {
    if (pair.before == nullptr) {
      AddWholeVoice(*pair.after, Action::kAdded, differences);
    } else if (pair.after == nullptr) {
      AddWholeVoice(*pair.before, Action::kDropped, differences);
    } else {
      VoiceComparison(pair, differences).Compare();
    }
  }
}

}  // namespace zuna_toolkit
