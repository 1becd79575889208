// Finds notes that have another pitch at the same start.
#include <algorithm>
#include <tuple>

#include "toolkit/comparison/internal/list_comparison.h"
#include "toolkit/comparison/internal/notes.h"

namespace zuna_toolkit {

namespace {

using Notes = std::vector<Note>;

/// Everything but the pitch.
auto RestOf(const Note& note) {
  return std::tuple(note.tick, note.channel, note.velocity, note.length, note.release_kind,
                    note.release_velocity);
}

bool HasLessRest(const Note& a, const Note& b) { return RestOf(a) < RestOf(b); }

bool IsInOrderOfRest(const Note& a, const Note& b) {
  return RestOf(a) != RestOf(b) ? HasLessRest(a, b) : a.pitch < b.pitch;
}

bool HaveOneStart(const Note& a, const Note& b) { return a.tick == b.tick && a.channel == b.channel; }

bool StartsBefore(const Note& a, const Note& b) {
  return std::tie(a.tick, a.channel) < std::tie(b.tick, b.channel);
}

/// Notes of one start and channel in both lists.
struct Chord {
  std::size_t before = 0;  ///< the index of the first one
  std::size_t after = 0;
  std::size_t size = 0;
  int interval = 0;  ///< semitones that all of them move; 0 where they differ otherwise
};

std::size_t EndOfChord(const Notes& notes, std::size_t begin) {
  std::size_t end = begin;
  while (end < notes.size() && HaveOneStart(notes[begin], notes[end])) ++end;
  return end;
}

/// The chord that begins at these indexes, where both lists have the same start there.
Chord ChordAt(const Notes& before, const Notes& after, std::size_t i, std::size_t j, Transposed which) {
  Chord chord{i, j, EndOfChord(before, i) - i, after[j].pitch - before[i].pitch};
  if (EndOfChord(after, j) - j != chord.size) chord.interval = 0;
  for (std::size_t k = 0; k < chord.size && chord.interval != 0; ++k) {
    Note moved = before[i + k];
    moved.pitch = after[j + k].pitch;
    const bool same = which == Transposed::kAndMore || RestOf(moved) == RestOf(after[j + k]);
    if (!same || moved.pitch - before[i + k].pitch != chord.interval) chord.interval = 0;
  }
  return chord;
}

/// Takes runs of chords out of two lists that are in the order of time, channel and pitch.
class TransposedRuns {
 public:
  TransposedRuns(Notes& before, Notes& after, Transposed which, std::vector<NotePair>& transposed)
      : before_(before),
        after_(after),
        which_(which),
        transposed_(transposed),
        taken_before_(before.size()),
        taken_after_(after.size()) {}

  void Take() {
    for (std::size_t i = 0, j = 0; i < before_.size() && j < after_.size();) {
      if (StartsBefore(before_[i], after_[j])) {
        EndRun();
        i = EndOfChord(before_, i);
      } else if (StartsBefore(after_[j], before_[i])) {
        EndRun();
        j = EndOfChord(after_, j);
      } else {
        Add(ChordAt(before_, after_, i, j, which_));
        i = EndOfChord(before_, i);
        j = EndOfChord(after_, j);
      }
    }
    EndRun();
    RemoveTaken(before_, taken_before_);
    RemoveTaken(after_, taken_after_);
  }

 private:
  void Add(const Chord& chord) {
    if (!run_.empty() && run_.back().interval != chord.interval) EndRun();
    if (chord.interval != 0) run_.push_back(chord);
  }

  void EndRun() {
    std::size_t notes = 0;
    for (const Chord& chord : run_) notes += chord.size;
    for (const Chord& chord : run_) {
      for (std::size_t k = 0; k < chord.size && notes >= kFewestOfARun && run_.size() > 1; ++k) {
        transposed_.push_back({before_[chord.before + k], after_[chord.after + k]});
        taken_before_[chord.before + k] = true;
        taken_after_[chord.after + k] = true;
      }
    }
    run_.clear();
  }

  Notes& before_;
  Notes& after_;
  Transposed which_;
  std::vector<NotePair>& transposed_;
  std::vector<bool> taken_before_;
  std::vector<bool> taken_after_;
  std::vector<Chord> run_;  ///< consecutive chords of one interval
};

}  // namespace

void TakeTransposedRuns(Notes& before, Notes& after, Transposed which, std::vector<NotePair>& transposed) {
  TransposedRuns(before, after, which, transposed).Take();
}

void TakeOtherPitches(Notes& before, Notes& after, std::vector<NotePair>& transposed) {
  std::sort(before.begin(), before.end(), IsInOrderOfRest);
  std::sort(after.begin(), after.end(), IsInOrderOfRest);
  TakeEquivalent(before, after, HasLessRest, [&](const Note& a, const Note& b) {
    transposed.push_back({a, b});
  });
}

void TakeSameStarts(Notes& before, Notes& after, std::vector<NotePair>& transposed) {
  std::vector<bool> taken_before(before.size());
  std::vector<bool> taken_after(after.size());
  for (std::size_t i = 0, j = 0; i < before.size() && j < after.size();) {
    if (StartsBefore(before[i], after[j])) {
      ++i;
    } else if (StartsBefore(after[j], before[i])) {
      ++j;
    } else {
      const std::size_t end = EndOfChord(before, i);
      const std::size_t after_end = EndOfChord(after, j);
      const bool as_many = end - i == after_end - j;
      for (; as_many && i < end; ++i, ++j) {
        transposed.push_back({before[i], after[j]});
        taken_before[i] = taken_after[j] = true;
      }
      i = end;
      j = after_end;
    }
  }
  RemoveTaken(before, taken_before);
  RemoveTaken(after, taken_after);
}

}  // namespace zuna_toolkit
