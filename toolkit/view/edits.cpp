// The rows of the edits of a log: brackets, shaded spans, signs and letters over the bars.
#include <array>
#include <cstdint>

#include "kit/format.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/edit_words.h"
#include "toolkit/view/internal/marks.h"
#include "toolkit/view/internal/markup.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kMostRows = 3;

/// Shares the edits of a kind out to rows, in which they do not overlap while there are rows left.
class Rows {
 public:
  /// The row of an edit from `x` to `end`. Edits come in the order of their beginnings.
  int Take(int x, int end) {
    std::size_t row = 0;
    while (row + 1 < kMostRows && ends_.at(row) > x) ++row;
    ends_.at(row) = std::max(ends_.at(row), end);
    used_ = std::max(used_, row + 1);
    return static_cast<int>(row);
  }
  int used() const { return static_cast<int>(used_); }

 private:
  std::array<int, kMostRows> ends_{};
  std::size_t used_ = 1;
};

/// The edges of an edit in the picture.
struct Edges {
  int x;
  int end;
};

Edges EdgesOf(const ViewedEdit& edit, EditShape shape, const Scale& scale) {
  constexpr int kSign = 16;  // units across
  const int x = scale.X(std::min(edit.start, edit.end));
  if (shape == EditShape::kCaesura) return {x, x + kSign};
  if (shape == EditShape::kLetter) return {x, x + kSign + TextWidth(edit.text)};
  return {x, std::max(scale.X(std::max(edit.start, edit.end)), x + 4)};
}

std::string Bracket(const Edges& edges, int top) {
  return kit::format("<path d=\"M%d %dv-10H%dv10\"/>", edges.x, top + kRowHeight - 4, edges.end);
}

std::string Span(const Edges& edges, int top) {
  return kit::format("<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"/>", edges.x, top + 2,
                     edges.end - edges.x, kRowHeight - 4);
}

/// An arc over a dot, above the middle of the note.
std::string FermataSign(const Edges& edges, int top) {
  const int middle = (edges.x + edges.end) / 2;
  return Span(edges, top) +
         kit::format("<path d=\"M%d %da7 8 0 0 1 14 0\"/><circle cx=\"%d\" cy=\"%d\" r=\"2\"/>", middle - 7,
                     top + 14, middle, top + 13);
}

/// Two strokes.
std::string CaesuraSign(const Edges& edges, int top) {
  return kit::format("<path d=\"M%d %dl5 -13M%d %dl5 -13\"/>", edges.x, top + 17, edges.x + 5, top + 17);
}

std::string Shape(EditShape shape, const Edges& edges, int top) {
  switch (shape) {
    case EditShape::kSpan:
    case EditShape::kLetter:
      return Span(edges, top);
    case EditShape::kFermata:
      return FermataSign(edges, top);
    case EditShape::kCaesura:
      return CaesuraSign(edges, top);
    default:
      return Bracket(edges, top);
  }
}

std::string TitleOf(const EditKind& kind, const ViewedEdit& edit, const ViewedSong& song) {
  std::string title(kind.one);
  if (!edit.text.empty()) title += " " + edit.text;
  if (!edit.label.empty()) title += " \"" + edit.label + '"';
  title += edit.start == edit.end ? " at " : " from ";
  title += song.PlaceText(edit.start);
  return edit.start == edit.end ? title : title + " to " + song.PlaceText(edit.end);
}

/// Whose edits a row shows.
enum class EditsOfSong : std::uint8_t { kDrawn, kOther };

/// Adds a row with the edits of a kind, or several where they overlap; none where there are none.
void DrawRows(const EditKind& kind, EditsOfSong whose, const ViewedSong& song, Drawing& drawing) {
  const bool are_drawn = whose == EditsOfSong::kDrawn;
  const std::vector<ViewedEdit>& edits = are_drawn ? kind.edits : kind.only_there;
  if (edits.empty()) return;
  Rows rows;
  TextRoom room;
  const int top = are_drawn ? drawing.AddRow(kRowHeight, kind.many, "")
                            : drawing.AddRow(kRowHeight, song.OtherRow(kind.many), kOnlyThere);
  drawing.rows +=
      "<g" + Attribute("class", "edit " + std::string(are_drawn ? kind.css_class : kOnlyThere)) + ">";
  for (const ViewedEdit& edit : edits) {
    const Edges edges = EdgesOf(edit, kind.shape, drawing.scale);
    const int row_top = top + rows.Take(edges.x, edges.end) * kRowHeight;
    drawing.rows += edit.only_here ? "<g" + Attribute("class", kOnlyHere) + ">" : "<g>";
    drawing.rows += Element("title", TitleOf(kind, edit, song)) + Shape(kind.shape, edges, row_top);
    if (kind.shape == EditShape::kCut && are_drawn) drawing.cuts.emplace_back(edges.x, edges.end);
    const bool has_room = row_top != top || room.Take(edges.x, edit.text);
    if (kind.shape != EditShape::kFermata && !edit.text.empty() && has_room) {
      const int lower = kind.shape == EditShape::kBracket ? 4 : 0;  // below the line
      drawing.rows += TextAt(edges.x + 5, row_top + kTextBaseline + lower, "", edit.text);
    }
    drawing.rows += "</g>";
  }
  drawing.rows += "</g>";
  drawing.height += (rows.used() - 1) * kRowHeight;
}

}  // namespace

void DrawEdits(const ViewedSong& song, Drawing& drawing) {
  for (const EditKind& kind : song.edits) {
    DrawRows(kind, EditsOfSong::kDrawn, song, drawing);
    DrawRows(kind, EditsOfSong::kOther, song, drawing);
  }
}

}  // namespace zuna_toolkit
