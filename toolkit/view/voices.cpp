// The rows of the voices: notes as a piano roll, or how many there are where they do not fit.
#include <array>
#include <set>
#include <vector>

#include "format_converter/version0/conversions/track_ids.h"
#include "kit/format.h"
#include "toolkit/smf/file.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/markup.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr int kVoiceRow = 44;   // units
constexpr int kVoiceRoll = 32;  // of it: the notes
constexpr int kAboveRoll = 4;   // above them
constexpr int kBelowRoll = 40;  // where the line of controllers is, below the top
constexpr int kKeys = 128;      // of MIDI
constexpr int kChannels = 16;

/// A note across the picture.
struct DrawnNote {
  int x;
  int end;
  int key;
};

/// A program change.
struct Program {
  std::uint32_t tick;
  int number;  ///< from 1, as in General MIDI
};

/// What a voice does, in units of the picture.
struct VoiceContent {
  std::vector<DrawnNote> notes;
  std::vector<Program> programs;  ///< kMostOfAKind at most
  std::vector<int> controls;      ///< where there are controllers, pressures and pitch bends
  std::set<int> channels;         ///< from 1
  int lowest = kKeys;             ///< key
  int highest = -1;
};

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

/// "C4" for key 60
std::string KeyName(int key) {
  constexpr std::array<const char*, 12> kNames = {"C",  "C♯", "D",  "D♯", "E",  "F",
                                                  "F♯", "G",  "G♯", "A",  "A♯", "B"};
  return kNames.at(static_cast<std::size_t>(key % 12)) + std::to_string(key / 12 - 1);
}

/// One line for each note; drums have no length.
PathData RollPath(const VoiceContent& voice, bool is_drums, int top) {
  constexpr int kDrum = 3;  // units across
  const int keys = std::max(voice.highest - voice.lowest, 1);
  PathData path;
  for (const DrawnNote& note : voice.notes) {
    const int y = top + kAboveRoll + kVoiceRoll - 1 - (note.key - voice.lowest) * (kVoiceRoll - 2) / keys;
    path.MoveTo(note.x, y).AcrossBy(is_drums ? kDrum : note.end - note.x);
  }
  return path;
}

/// How many notes begin in each part of the picture, as the outline of an area.
PathData DensityPath(const VoiceContent& voice, const Scale& scale, int top) {
  constexpr int kMostParts = 2000;
  const int parts = std::min(scale.width / 2, kMostParts);
  std::vector<std::size_t> counts(static_cast<std::size_t>(parts) + 1);
  for (const DrawnNote& note : voice.notes) {
    ++counts.at(static_cast<std::size_t>(std::int64_t{note.x - Scale::kNames} * parts / scale.width));
  }
  const std::size_t most = *std::max_element(counts.begin(), counts.end());
  const int bottom = top + kAboveRoll + kVoiceRoll;
  PathData path;
  path.MoveTo(Scale::kNames, bottom);
  std::size_t before = 0;
  for (int part = 0; part <= parts; ++part) {
    const std::size_t up = counts.at(static_cast<std::size_t>(part)) * kVoiceRoll / most;
    if (up == before) continue;
    before = up;
    path.AcrossTo(Scale::kNames + part * scale.width / parts).DownTo(bottom - static_cast<int>(up));
  }
  path.AcrossTo(scale.X(scale.ticks)).DownTo(bottom);
  return path;
}

PathData ControlsPath(const VoiceContent& voice, int top) {
  constexpr int kMark = 3;  // units down
  PathData path;
  for (const int x : voice.controls) path.MoveTo(x, top + kBelowRoll).DownBy(kMark);
  return path;
}

std::string TitleOf(const zuna_midi::VoiceTrack& voice, const VoiceContent& content) {
  std::string title = "Voice " + std::to_string(voice.track_number) + ": " + voice.name + ", " +
                      Counted(voice.messages.size(), "event", "events");
  if (!content.channels.empty()) {
    std::string channels;
    for (const int channel : content.channels) AppendListed(channels, std::to_string(channel));
    title += (content.channels.size() == 1 ? ", channel " : ", channels ") + channels;
  }
  if (content.notes.empty()) return title;
  title += ", " + Counted(content.notes.size(), "note", "notes");
  return title + " from " + KeyName(content.lowest) + " to " + KeyName(content.highest);
}

void DrawPrograms(const ViewedSong& song, const VoiceContent& voice, int top, Drawing& drawing) {
  TextRoom room;
  for (const Program& program : voice.programs) {
    const std::string text = std::to_string(program.number);
    const int x = drawing.scale.X(program.tick);
    if (!room.Take(x, text)) continue;
    drawing.rows += TextWithTitle(x + 1, top + kBelowRoll + 2, "program", text,
                                  "program " + text + " from " + song.PlaceText(program.tick));
  }
}

void DrawVoice(const ViewedSong& song, const zuna_midi::VoiceTrack& voice, Drawing& drawing) {
  const VoiceContent content = VoiceReader(drawing.scale).Read(voice);
  const bool is_drums = version0::is_drum_name(voice.name);
  const int top = drawing.AddRow(kVoiceRow, voice.name, "voice");
  drawing.rows += is_drums ? "<g class=\"voice drums\">" : "<g class=\"voice\">";
  drawing.rows += Element("title", TitleOf(voice, content));
  if (content.notes.size() > static_cast<std::size_t>(drawing.scale.width)) {
    drawing.rows += DensityPath(content, drawing.scale, top).Element("density");
  } else {
    drawing.rows += RollPath(content, is_drums, top).Element("notes");
  }
  drawing.rows += ControlsPath(content, top).Element("controls");
  DrawPrograms(song, content, top, drawing);
  drawing.rows += "</g>";
}

}  // namespace

void DrawVoices(const ViewedSong& song, Drawing& drawing) {
  std::size_t left = kMostOfAKind;
  for (const auto& [number, voice] : song.song.voice_data->tracks()) {
    if (left-- == 0) break;
    DrawVoice(song, *voice, drawing);
  }
}

}  // namespace zuna_toolkit
