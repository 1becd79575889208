// The picture of one song while it is drawn.
#include "toolkit/view/internal/drawing.h"

#include "toolkit/view/internal/marks.h"
#include "toolkit/view/internal/markup.h"

namespace zuna_toolkit {

std::string ViewedSong::PlaceText(std::uint32_t tick) const {
  const std::string bar = bars.At(tick);
  std::string text = bar.empty() ? "" : "bar " + bar + ", ";
  if (time.is_known()) text += ClockText(time.SecondsAt(tick)) + ", ";
  return text + "tick " + std::to_string(tick);
}

int Drawing::AddRow(int row_height, std::string_view name, std::string_view css_class) {
  constexpr std::size_t kMostCharacters = 22;
  const int top = height;
  height += row_height;
  names += TextAt(8, top + kTextBaseline, css_class, Shortened(name, kMostCharacters));
  return top;
}

void DrawLegend(const ViewedSong& song, Drawing& drawing) {
  if (!song.is_compared()) return;
  constexpr int kMark = 10;  // units across
  constexpr int kSpace = 6;
  const int top = drawing.AddRow(kRowHeight, "Marks", "");
  int x = Scale::kNames;
  const auto add = [&](std::string_view css_class, std::string_view name) {
    drawing.rows += "<rect" + Attribute("class", std::string("mark ").append(css_class)) + " x=\"" +
                    std::to_string(x) + "\" y=\"" + std::to_string(top + 5) + "\" width=\"" +
                    std::to_string(kMark) + "\" height=\"" + std::to_string(kMark) + "\"/>";
    x += kMark + kSpace;
    drawing.rows += TextAt(x, top + kTextBaseline, css_class, name);
    x += TextWidth(name) + 4 * kSpace;
  };
  add(kOnlyHere, song.other.names.here);
  add(kOnlyThere, song.other.names.there);
}

std::string PathData::Element(std::string_view css_class) const {
  if (data_.empty()) return "";
  std::string element("<path");
  if (!css_class.empty()) element += Attribute("class", css_class);
  return element.append(" d=\"").append(data_).append("\"/>");
}

std::string TextAt(int x, int y, std::string_view css_class, std::string_view text) {
  const std::string css = css_class.empty() ? "" : Attribute("class", css_class);
  return "<text" + css + " x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\">" + Escaped(text) +
         "</text>";
}

std::string TextWithTitle(int x, int y, std::string_view css_class, std::string_view text,
                          std::string_view title) {
  return "<g>" + Element("title", title) + TextAt(x, y, css_class, text) + "</g>";
}

std::string AreaWithTitle(int x, int y, int width, int height, std::string_view css_class,
                          std::string_view title) {
  return "<rect" + Attribute("class", css_class) + " x=\"" + std::to_string(x) + "\" y=\"" +
         std::to_string(y) + "\" width=\"" + std::to_string(std::max(width, 1)) + "\" height=\"" +
         std::to_string(height) + "\">" + Element("title", title) + "</rect>";
}

}  // namespace zuna_toolkit
