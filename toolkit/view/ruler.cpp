// The rows that tell where one is in a song: bars, meters, keys and pages, and the tempo as a curve.
#include <limits>
#include <string_view>

#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/timeline_words.h"

namespace zuna_toolkit {

namespace {

/// Adds a row with the text of each entry; none where there is no entry.
template <typename Entry>
void DrawTexts(const ViewedSong& song, std::string_view name, const std::vector<Entry>& entries,
               std::string (*text_of)(const Entry&), Drawing& drawing) {
  if (entries.empty()) return;
  const int top = drawing.AddRow(kRowHeight, name, "");
  TextRoom room;
  for (const Entry& entry : entries) {
    const std::string text = text_of(entry);
    const int x = drawing.scale.X(entry.time);
    if (!room.Take(x, text)) continue;
    const std::string title = text + " from " + song.PlaceText(entry.time);
    drawing.rows += TextWithTitle(x + 2, top + kTextBaseline, "", text, title);
  }
}

/// The area of each bar tells its place. Bars that are too narrow to point at are passed over.
void DrawBars(const ViewedSong& song, const std::vector<TL::BarsBeats>& bars, Drawing& drawing) {
  constexpr int kNarrowest = 4;  // units
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
    if (room.Take(x, label)) drawing.rows += TextAt(x + 3, top + kTextBaseline, "label", label);
  }
}

}  // namespace

void DrawRuler(const ViewedSong& song, Drawing& drawing) {
  const TL::Timeline& timeline = *song.song.timeline;
  DrawBars(song, timeline.bars_beats, drawing);
  DrawTexts<TL::Meter>(song, "Meter", timeline.meters, MeterText, drawing);
  DrawTexts<TL::Key>(song, "Key", timeline.keys, KeyText, drawing);
  DrawTexts<TL::PageNumber>(song, "Page", timeline.page_numbers, PageText, drawing);
}

void DrawTempos(const ViewedSong& song, Drawing& drawing) {
  constexpr int kHeight = 56;  // units
  constexpr int kCurve = 32;   // of it: the curve, below the texts
  const std::vector<TL::Tempo>& tempos = song.song.timeline->tempos;
  if (tempos.empty()) return;
  const auto slower = [](const TL::Tempo& a, const TL::Tempo& b) { return TenthsOfBpm(a) < TenthsOfBpm(b); };
  const auto [least, most] = std::minmax_element(tempos.begin(), tempos.end(), slower);
  const long long low = TenthsOfBpm(*least);
  const long long range = TenthsOfBpm(*most) - low;
  const int bottom = drawing.AddRow(kHeight, "Tempo (bpm)", "") + kHeight - 4;
  TextRoom room;
  PathData path;
  std::string texts;
  for (const TL::Tempo& tempo : tempos) {
    const long long bpm = TenthsOfBpm(tempo);
    const int x = drawing.scale.X(tempo.time);
    const long long up = range == 0 ? kCurve / 2 : (bpm - low) * kCurve / range;
    const int y = bottom - static_cast<int>(up);
    if (path.empty()) {
      path.MoveTo(x, y);
    } else {
      path.AcrossTo(x).DownTo(y);
    }
    const std::string text = TempoText(tempo);
    if (!room.Take(x, text)) continue;
    texts += TextWithTitle(x + 2, y - 4, "label", text, text + " bpm from " + song.PlaceText(tempo.time));
  }
  path.AcrossTo(drawing.scale.X(drawing.scale.ticks));
  drawing.rows += path.Element("tempo") + texts;
}

}  // namespace zuna_toolkit
