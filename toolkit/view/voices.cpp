// The rows of the voices: notes as a piano roll, or how many there are where they do not fit.
#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "format_converter/version0/conversions/track_ids.h"
#include "kit/format.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/marks.h"
#include "toolkit/view/internal/markup.h"
#include "toolkit/view/internal/voice_content.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr int kMostParts = 2000;  // of a picture, in which notes are counted

constexpr int kVoiceRow = 44;   // units
constexpr int kVoiceRoll = 32;  // of it: the notes
constexpr int kAboveRoll = 4;   // above them
constexpr int kBelowRoll = 40;  // where the line of controllers is, below the top

/// "C4" for key 60
std::string KeyName(int key) {
  constexpr std::array<const char*, 12> kNames = {"C",  "C♯", "D",  "D♯", "E",  "F",
                                                  "F♯", "G",  "G♯", "A",  "A♯", "B"};
  return kNames.at(static_cast<std::size_t>(key % 12)) + std::to_string(key / 12 - 1);
}

/// One line for each of `notes`, which lie in the range of `voice`; drums have no length.
PathData RollPath(const std::vector<DrawnNote>& notes, const VoiceContent& voice, bool is_drums, int top) {
  constexpr int kDrum = 3;  // units across
  const int keys = std::max(voice.highest - voice.lowest, 1);
  PathData path;
  for (const DrawnNote& note : notes) {
    const int y = top + kAboveRoll + kVoiceRoll - 1 - (note.key - voice.lowest) * (kVoiceRoll - 2) / keys;
    path.MoveTo(note.x, y).AcrossBy(is_drums ? kDrum : note.end - note.x);
  }
  return path;
}

/// A stroke in each part of the picture where one of `notes` begins, for more of them than there is room for.
PathData StrokesPath(const std::vector<DrawnNote>& notes, int width, int top) {
  const int part = std::max(width / kMostParts, 1);  // units across
  std::set<int> parts;
  for (const DrawnNote& note : notes) parts.insert((note.x - Scale::kNames) / part);
  PathData path;
  for (const int index : parts) {
    path.MoveTo(Scale::kNames + index * part, top + kAboveRoll).DownBy(kVoiceRoll);
  }
  return path;
}

/// How many notes begin in each part of the picture, as the outline of an area.
PathData DensityPath(const VoiceContent& voice, const Scale& scale, int top) {
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

PathData ControlsPath(const std::vector<int>& controls, int top) {
  constexpr int kMark = 3;  // units down
  PathData path;
  for (const int x : controls) path.MoveTo(x, top + kBelowRoll).DownBy(kMark);
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

/// Widens the range of a voice to that of `notes`.
void Include(const std::vector<DrawnNote>& notes, VoiceContent& voice) {
  for (const DrawnNote& note : notes) {
    voice.lowest = std::min(voice.lowest, note.key);
    voice.highest = std::max(voice.highest, note.key);
  }
}

/// How the notes of a voice are drawn.
struct RollStyle {
  bool is_drums;
  int top;
  int width;  ///< of the picture
};

void DrawMarks(const MarkedContent& marks, const VoiceContent& voice, const RollStyle& style,
               std::string_view css_class, Drawing& drawing) {
  const bool has_room = marks.notes.size() <= static_cast<std::size_t>(style.width);
  const PathData notes = has_room ? RollPath(marks.notes, voice, style.is_drums, style.top)
                                  : StrokesPath(marks.notes, style.width, style.top);
  drawing.rows += notes.Element(css_class) + ControlsPath(marks.controls, style.top).Element(css_class);
}

/// A voice of either song, with what only one of them has.
void DrawVoice(const ViewedSong& song, const VoicePair& pair, Drawing& drawing) {
  const zuna_midi::VoiceTrack& voice = pair.before != nullptr ? *pair.before : *pair.after;
  const VoiceMarks marks = song.other.song == nullptr ? VoiceMarks() : MarksOfVoices(pair, drawing.scale);
  VoiceContent content = ContentOf(voice, drawing.scale);
  const std::string title = TitleOf(voice, content);
  Include(marks.there.notes, content);
  const bool is_drums = version0::is_drum_name(voice.name);
  const int top = pair.before != nullptr ? drawing.AddRow(kVoiceRow, voice.name, "voice")
                                         : drawing.AddRow(kVoiceRow, song.OtherRow(voice.name), kOnlyThere);
  const RollStyle style{is_drums, top, drawing.scale.width};
  drawing.rows += is_drums ? "<g class=\"voice drums\">" : "<g class=\"voice\">";
  drawing.rows += Element("title", title);
  if (content.notes.size() > static_cast<std::size_t>(drawing.scale.width)) {
    drawing.rows += DensityPath(content, drawing.scale, top).Element("density");
  } else {
    drawing.rows += RollPath(content.notes, content, is_drums, top).Element("notes");
  }
  drawing.rows += ControlsPath(content.controls, top).Element("controls");
  DrawMarks(marks.there, content, style, kOnlyThere, drawing);
  DrawMarks(marks.here, content, style, kOnlyHere, drawing);
  DrawPrograms(song, content, top, drawing);
  drawing.rows += "</g>";
}

/// The voices of a song, each with the one that it is compared with.
std::vector<VoicePair> PairsOf(const ViewedSong& song) {
  if (song.other.song != nullptr) return song.other.voices;
  std::vector<VoicePair> pairs;
  for (const auto& [number, voice] : song.song.voice_data->tracks()) pairs.push_back({voice.get()});
  return pairs;
}

}  // namespace

void DrawVoices(const ViewedSong& song, Drawing& drawing) {
  std::size_t left = kMostOfAKind;
  for (const VoicePair& pair : PairsOf(song)) {
    if (left-- == 0) break;
    DrawVoice(song, pair, drawing);
  }
}

}  // namespace zuna_toolkit
