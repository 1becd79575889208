// The rows that tell where one is in a song: bars, meters, keys and pages, and the tempo as a curve.
#include <algorithm>
#include <limits>
#include <string_view>

#include "toolkit/comparison/internal/timeline_entries.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/marks.h"
#include "toolkit/view/internal/timeline_words.h"

namespace zuna_toolkit {

namespace {

/// Texts in a row, each where it begins; those that have no room are left out.
class TextRow {
 public:
  TextRow(const ViewedSong& song, int top, Drawing& drawing) : song_(song), top_(top), drawing_(drawing) {}

  void Add(std::uint32_t tick, const std::string& text, std::string_view css_class) {
    const int x = drawing_.scale.X(tick);
    if (!room_.Take(x, text)) return;
    const std::string title = text + " from " + song_.PlaceText(tick);
    drawing_.rows += TextWithTitle(x + 2, top_ + kTextBaseline, css_class, text, title);
  }

 private:
  const ViewedSong& song_;
  int top_;
  Drawing& drawing_;
  TextRoom room_;
};

/// Adds a row with what only the other song has; none where there is nothing.
template <typename Entry, typename TextOf>
void DrawOtherTexts(const ViewedSong& song, std::string_view name, const Marks<Entry>& marks, TextOf text_of,
                    Drawing& drawing) {
  if (marks.only_there.empty()) return;
  TextRow row(song, drawing.AddRow(kRowHeight, song.OtherRow(name), kOnlyThere), drawing);
  for (const Entry* entry : marks.only_there) row.Add(entry->time, text_of(*entry), kOnlyThere);
}

/// Adds a row with the text of each entry; none where there is no entry.
template <typename Entry>
void DrawTexts(const ViewedSong& song, std::string_view name, std::vector<Entry> TL::Timeline::*list,
               std::string (*text_of)(const Entry&), Drawing& drawing) {
  const std::vector<Entry>& entries = (*song.song.timeline).*list;
  const Marks<Entry> marks = MarksOf(entries, song.OtherList(list));
  if (!entries.empty()) {
    TextRow row(song, drawing.AddRow(kRowHeight, name, ""), drawing);
    for (std::size_t i = 0; i < entries.size(); ++i) {
      row.Add(entries[i].time, text_of(entries[i]), marks.ClassOf(i));
    }
  }
  DrawOtherTexts(song, name, marks, text_of, drawing);
}

/// The area of each bar tells its place. Bars that are too narrow to point at are passed over.
void DrawBars(const ViewedSong& song, Drawing& drawing) {
  constexpr int kNarrowest = 4;  // units
  const std::vector<TL::BarsBeats>& bars = song.song.timeline->bars_beats;
  const auto marks = MarksOf(bars, song.OtherList(&TL::Timeline::bars_beats));
  const int top = drawing.AddRow(kRowHeight, "Bars", "");
  TextRoom room;
  int last = std::numeric_limits<int>::min() / 2;
  for (std::size_t i = 0; i < bars.size(); ++i) {
    const int x = drawing.scale.X(bars[i].time);
    if (x - last < kNarrowest && last <= x) continue;
    last = x;
    const std::uint32_t end = i + 1 < bars.size() ? bars[i + 1].time : song.song.song_length;
    drawing.bar_lines.push_back(x);
    drawing.rows +=
        AreaWithTitle(x, top, drawing.scale.X(end) - x, kRowHeight, "bar", song.PlaceText(bars[i].time));
    const std::string_view label = bars[i].bar_number();
    if (!room.Take(x, label)) continue;
    drawing.rows += TextAt(x + 3, top + kTextBaseline, marks.only_here[i] ? kOnlyHere : "label", label);
  }
  const auto label_of = [](const TL::BarsBeats& bar) { return std::string(bar.bar_number()); };
  DrawOtherTexts(song, "Bars", marks, label_of, drawing);
}

/// The tempos of a song as a curve.
class TempoCurve {
 public:
  static constexpr int kHeight = 56;  // units, of the row

  TempoCurve(const ViewedSong& song, const Scale& scale) : scale_(scale) {
    Include(song.song.timeline->tempos);
    if (song.other.song != nullptr) Include(song.other.song->timeline->tempos);
  }

  /// Above the bottom of the row.
  int Up(const TL::Tempo& tempo) const {
    constexpr int kCurve = 32;  // units, below the texts
    constexpr int kBelow = 4;
    const long long range = high_ - low_;
    const long long up = range == 0 ? kCurve / 2 : (TenthsOfBpm(tempo) - low_) * kCurve / range;
    return static_cast<int>(up) + kBelow;
  }

  PathData Path(const std::vector<TL::Tempo>& tempos, int bottom) const {
    PathData path;
    for (const TL::Tempo& tempo : tempos) {
      const int x = scale_.X(tempo.time);
      const int y = bottom - Up(tempo);
      if (path.empty()) {
        path.MoveTo(x, y);
      } else {
        path.AcrossTo(x).DownTo(y);
      }
    }
    if (!path.empty()) path.AcrossTo(scale_.X(scale_.ticks));
    return path;
  }

 private:
  void Include(const std::vector<TL::Tempo>& tempos) {
    for (const TL::Tempo& tempo : tempos) {
      low_ = std::min(low_, TenthsOfBpm(tempo));
      high_ = std::max(high_, TenthsOfBpm(tempo));
    }
  }

  const Scale& scale_;
  long long low_ = std::numeric_limits<long long>::max();  // tenths of bpm
  long long high_ = 0;
};

}  // namespace

void DrawRuler(const ViewedSong& song, Drawing& drawing) {
  DrawBars(song, drawing);
  DrawTexts(song, "Meter", &TL::Timeline::meters, MeterText, drawing);
  DrawTexts(song, "Key", &TL::Timeline::keys, KeyText, drawing);
  DrawTexts(song, "Page", &TL::Timeline::page_numbers, PageText, drawing);
}

void DrawTempos(const ViewedSong& song, Drawing& drawing) {
  constexpr const char* kName = "Tempo (bpm)";
  const std::vector<TL::Tempo>& tempos = song.song.timeline->tempos;
  const auto* others = song.OtherList(&TL::Timeline::tempos);
  const Marks<TL::Tempo> marks = MarksOf(tempos, others);
  if (tempos.empty() && marks.only_there.empty()) return;
  const TempoCurve curve(song, drawing.scale);
  const int bottom = drawing.AddRow(TempoCurve::kHeight, kName, "") + TempoCurve::kHeight;
  if (marks.any()) drawing.rows += curve.Path(*others, bottom).Element("tempo there");
  drawing.rows += curve.Path(tempos, bottom).Element("tempo");
  TextRoom room;
  for (std::size_t i = 0; i < tempos.size(); ++i) {
    const std::string text = TempoText(tempos[i]);
    const int x = drawing.scale.X(tempos[i].time);
    if (!room.Take(x, text)) continue;
    drawing.rows +=
        TextWithTitle(x + 2, bottom - curve.Up(tempos[i]) - 4, marks.only_here[i] ? kOnlyHere : "label", text,
                      text + " bpm from " + song.PlaceText(tempos[i].time));
  }
  DrawOtherTexts(song, kName, marks, TempoText, drawing);
}

}  // namespace zuna_toolkit
