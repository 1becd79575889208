// The picture of one song while it is drawn: rows from top to bottom over one scale of ticks.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "CL/song_log.h"
#include "toolkit/comparison/internal/voices.h"
#include "toolkit/internal/bar_labels.h"
#include "toolkit/view/internal/edit_words.h"
#include "toolkit/view/internal/song_time.h"
#include "zuna_midi/song_data.h"

namespace zuna_toolkit {

inline constexpr int kRowHeight = 20;     ///< of a row of texts, in units of the picture
inline constexpr int kTextBaseline = 14;  ///< of a text, below the top of its row

/// What the marks of a comparison are called.
struct MarkNames {
  std::string_view here;   ///< in the legend: what only the song that is drawn has
  std::string_view there;  ///< in the legend: what only the other one has
  std::string_view row;    ///< how the rows of the other one are called besides, such as "before"
};

/// The song that a picture is compared with: as it was earlier, or as the legacy format has it.
struct OtherSong {
  const zuna_midi::SongData* song = nullptr;  ///< null where the songs are not compared
  const CL::SongLog* log = nullptr;           ///< null where the edits are not compared
  std::vector<VoicePair> voices;              ///< first those of the song that is drawn
  MarkNames names;
};

/// One song, and what is needed to tell where something is in it.
struct ViewedSong {
  const zuna_midi::SongData& song;
  const CL::SongLog* log;  ///< null where the page has no log
  SongTime time;
  BarLabels bars;
  std::vector<EditKind> edits;  ///< of the log
  OtherSong other;

  /// A list of the timeline of the other song; null where the songs are not compared.
  template <typename Entry>
  const std::vector<Entry>* OtherList(std::vector<Entry> TL::Timeline::*list) const {
    return other.song == nullptr ? nullptr : &((*other.song->timeline).*list);
  }

  /// Whether anything is compared.
  bool is_compared() const { return other.song != nullptr || other.log != nullptr; }

  /// The name of a row of what only the other song has: "Meter before".
  std::string OtherRow(std::string_view row) const {
    return std::string(row).append(" ").append(other.names.row);
  }

  /// "bar 9, 0:28.0, tick 13440"
  std::string PlaceText(std::uint32_t tick) const;
};

/// Positions across the picture, in units of the picture.
struct Scale {
  static constexpr int kNames = 150;  ///< the column of the names of the rows

  std::uint32_t ticks = 1;  ///< that the song has, or the other one where that is longer
  int width = 1;            ///< that they take

  /// Where a tick is. One after the end of the song is at the end.
  int X(std::uint32_t tick) const {
    const std::uint64_t at = std::min(tick, ticks);
    return kNames + static_cast<int>(at * static_cast<std::uint64_t>(width) / ticks);
  }
};

/// The SVG elements that were drawn so far.
struct Drawing {
  Scale scale;
  int height = 0;                         ///< of the rows so far
  std::string rows;                       ///< what was drawn
  std::string names;                      ///< the names of the rows, which stay in view
  std::vector<int> bar_lines;             ///< where bars begin, over all rows
  std::vector<std::pair<int, int>> cuts;  ///< what is left out, over all rows

  /// Adds a row of this height with its name, and returns where its top is.
  int AddRow(int row_height, std::string_view name, std::string_view css_class);
};

/// How wide a text is at most, by its bytes. A very long one is cut off by the picture anyway.
inline int TextWidth(std::string_view text) {
  constexpr int kCharacter = 7;  // units, of the font of the picture
  constexpr std::size_t kLongest = 1000;
  return static_cast<int>(std::min(text.size(), kLongest)) * kCharacter;
}

/// Says which texts of a row can be shown: those that begin after the end of the one before.
class TextRoom {
 public:
  /// Whether a text of `text` at `x` does not overlap the one before.
  bool Take(int x, std::string_view text) {
    constexpr int kSpace = 7;  // units, after a text
    if (x < free_) return false;
    free_ = x + TextWidth(text) + kSpace;
    return true;
  }

 private:
  int free_ = 0;
};

/// The data of an SVG path (SVG 1.1, section 8.3), whose coordinates are whole units.
class PathData {
 public:
  PathData& MoveTo(int x, int y) { return Add('M', x).Add(' ', y); }
  PathData& AcrossTo(int x) { return Add('H', x); }
  PathData& DownTo(int y) { return Add('V', y); }
  PathData& AcrossBy(int width) { return Add('h', width); }
  PathData& DownBy(int height) { return Add('v', height); }

  bool empty() const { return data_.empty(); }

  /// `<path class="css_class" d="..."/>`; empty for no data.
  std::string Element(std::string_view css_class) const;

 private:
  /// A command, or a space before its second value.
  PathData& Add(char command, int value) {
    data_ += command;
    data_ += std::to_string(value);
    return *this;
  }

  std::string data_;
};

/// `<text class="css_class" x="x" y="y">text</text>`
std::string TextAt(int x, int y, std::string_view css_class, std::string_view text);

/// The same with a text that a browser shows where the pointer is.
std::string TextWithTitle(int x, int y, std::string_view css_class, std::string_view text,
                          std::string_view title);

/// A rectangle with a text that a browser shows where the pointer is.
std::string AreaWithTitle(int x, int y, int width, int height, std::string_view css_class,
                          std::string_view title);

/// Each adds its rows.
///@{
void DrawLegend(const ViewedSong& song, Drawing& drawing);
void DrawEdits(const ViewedSong& song, Drawing& drawing);
void DrawRuler(const ViewedSong& song, Drawing& drawing);
void DrawTempos(const ViewedSong& song, Drawing& drawing);
void DrawVoices(const ViewedSong& song, Drawing& drawing);
///@}

}  // namespace zuna_toolkit
