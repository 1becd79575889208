// The differences of two documents as lines of text.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "kit/api.h"
#include "toolkit/comparison/difference.h"

namespace zuna_toolkit {

/// What is told about one difference, or about many alike that follow each other. Texts hold names as they
/// stand in the documents, in any bytes.
struct DifferenceLine {
  std::string song;  ///< its number; empty for the document as a whole
  bool is_about_song =
      false;         ///< it names the song: that, or all its edits, are added, removed or renumbered
  std::string text;  ///< such as: tempo at bar 3 (tick 960): 120 bpm becomes 110 bpm
};

/// Takes lines in the order of the comparison.
using DifferenceLineSink = std::function<void(const DifferenceLine&)>;

/// Makes lines of differences. Many alike that follow each other share a line.
class ZUNA_API DifferenceLines {
 public:
  /// `sink` takes the lines.
  explicit DifferenceLines(DifferenceLineSink sink);
  DifferenceLines(const DifferenceLines&) = delete;
  DifferenceLines& operator=(const DifferenceLines&) = delete;
  ~DifferenceLines();

  /// Takes the next difference in the order of the comparison.
  void Add(const Difference& difference);

  /// Called after the last one.
  void Finish();

 private:
  struct Run;

  DifferenceLineSink sink_;
  std::unique_ptr<Run> run_;  ///< differences alike that follow each other; null at first
};

}  // namespace zuna_toolkit
