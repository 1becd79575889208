// Compares documents of every kind and version.
#include "toolkit/comparison/comparison.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

#include "toolkit/comparison/internal/compare_models.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/internal/complete_songs.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"

namespace zuna_toolkit {

namespace {

constexpr const char* kGiveBothForms = "give both forms of one document";

/// As OnFile(), where `work` is given a sink that hands on to `sink`. What `sink` throws is its caller's own
/// and stays what it is.
template <typename Work>
void OnFileWithSink(const std::string& name, const DifferenceSink& sink, Work work) {
  std::exception_ptr from_sink;
  const DifferenceSink hand_on = [&](const Difference& difference) {
    try {
      sink(difference);
    } catch (...) {
      from_sink = std::current_exception();
      throw;
    }
  };
  try {
    OnFile(name, [&] { work(hand_on); });
  } catch (...) {
    if (from_sink) std::rethrow_exception(from_sink);
    throw;
  }
}

/// A legacy log holds no divisions, and not every companion has them all.
void AddUnknownDivisions(const CL::ChangeLog& log, const DifferenceSink& sink) {
  for (const auto& [number, song] : log.song_logs()) {
    if (song->division != 0) continue;
    Difference difference;
    difference.subject = Subject::kDivision;
    difference.action = Action::kDefaulted;
    difference.song = number;
    difference.after = std::to_string(song->division);
    sink(difference);
  }
}

/// The losses of a conversion are those between both forms of one document.
void RequireTwoForms(const Document& legacy, const Document& current) {
  RequireLegacy(legacy.type(), legacy.name());
  RequireCurrent(current.type(), current.name());
  RequireCompleteSongs(current);
  if (legacy.type().kind == current.type().kind) return;
  throw Error(ErrorCode::kNotOneDocument, legacy.name(), "is not the legacy form of " + current.name(),
              kGiveBothForms);
}

/// None unless both are legacy shows.
std::optional<LegacyForms> LegacyFormsOf(const Document& before, const Document& after) {
  const auto* a = before.As<LegacyShow>();
  const auto* b = after.As<LegacyShow>();
  if (a == nullptr || b == nullptr) return std::nullopt;
  return LegacyForms{a->show, b->show};
}

/// What stands behind the last song of a legacy show.
void CompareTrailingBytes(const Document& before, const Document& after, const DifferenceSink& sink) {
  const auto* a = before.As<LegacyShow>();
  const auto* b = after.As<LegacyShow>();
  if (a == nullptr || b == nullptr || a->trailing_bytes == b->trailing_bytes) return;
  Difference difference;
  difference.subject = Subject::kTrailingBytes;
  difference.before = std::to_string(a->trailing_bytes);
  difference.after = std::to_string(b->trailing_bytes);
  sink(difference);
}

}  // namespace

void ThrowNotOneDocument(const std::string& song) {
  ErrorParts parts;
  parts.song = song;
  parts.problem = "song " + song + " is not the same song in the other form";
  parts.remedy = kGiveBothForms;
  throw Error(ErrorCode::kNotOneDocument, std::move(parts));
}

void Compare(const Document& before, const Document& after, const DifferenceSink& sink) {
  if (before.type().kind != after.type().kind) {
    throw Error(ErrorCode::kWrongKind, after.name(),
                "is " + TypeText(after.type()) + " and " + before.name() + " is " + TypeText(before.type()),
                "give two shows or two logs");
  }
  RequireCompleteSongs(before);
  RequireCompleteSongs(after);
  const Document a = CurrentForm(before);
  const Document b = CurrentForm(after);
  const bool has_one_legacy = before.type().is_legacy() != after.type().is_legacy();
  const Subject from_companion = a.type().is_log() ? Subject::kDivision : Subject::kShowName;
  const DifferenceSink comparable = [&](const Difference& difference) {
    if (!has_one_legacy || difference.subject != from_companion) sink(difference);
  };
  if (a.type().is_log()) {
    CompareLogs(*a.As<CL::ChangeLog>(), *b.As<CL::ChangeLog>(), comparable);
  } else {
    CompareShows(*a.As<zuna_midi::ShowData>(), *b.As<zuna_midi::ShowData>(), LegacyFormsOf(before, after),
                 comparable);
    CompareTrailingBytes(before, after, sink);
  }
}

std::vector<Difference> Compare(const Document& before, const Document& after) {
  std::vector<Difference> differences;
  Compare(before, after, [&](const Difference& difference) { differences.push_back(difference); });
  return differences;
}

void LossesOfDown(const Document& current, const Document& legacy, const DifferenceSink& sink) {
  RequireTwoForms(legacy, current);
  OnFileWithSink(current.name(), sink, [&](const DifferenceSink& hand_on) {
    if (const auto* log = current.As<CL::ChangeLog>()) {
      CompareWithUpAgain(*log, legacy.As<LegacyLog>()->log, hand_on);
    } else {
      CompareWithUpAgain(*current.As<zuna_midi::ShowData>(), legacy.As<LegacyShow>()->show, hand_on);
    }
  });
}

void LossesOfUp(const Document& legacy, const Document& current, const DifferenceSink& sink) {
  RequireTwoForms(legacy, current);
  std::size_t replaced_songs = 0;
  std::size_t replaced_sequences = 0;
  std::size_t trailing_bytes = 0;
  if (const auto* show = legacy.As<LegacyShow>()) {
    OnFileWithSink(legacy.name(), sink, [&](const DifferenceSink& hand_on) {
      CompareWithDownAgain(show->show, *current.As<zuna_midi::ShowData>(), hand_on);
    });
    replaced_songs = show->replaced_songs;
    replaced_sequences = show->replaced_sequences;
    trailing_bytes = show->trailing_bytes;
  } else {
    // The current model has a place for every field of a legacy log.
    AddUnknownDivisions(*current.As<CL::ChangeLog>(), sink);
    replaced_songs = legacy.As<LegacyLog>()->replaced_songs;
    replaced_sequences = legacy.As<LegacyLog>()->replaced_sequences;
  }
  const auto add = [&](Subject subject, Action action, std::size_t count) {
    if (count == 0) return;
    Difference difference;
    difference.subject = subject;
    difference.action = action;
    difference.count = count;
    sink(difference);
  };
  add(Subject::kSong, Action::kReplaced, replaced_songs);
  add(Subject::kSequence, Action::kReplaced, replaced_sequences);
  add(Subject::kTrailingBytes, Action::kDropped, trailing_bytes);
}

void DifferenceGroups::Add(const Difference& difference) {
  const auto same_code = [&](const Group& group) {
    return group.first.subject == difference.subject && group.first.action == difference.action;
  };
  const auto found = std::find_if(groups_.begin(), groups_.end(), same_code);
  if (found == groups_.end()) {
    groups_.push_back({difference, difference.count});
  } else {
    found->count += difference.count;
  }
}

}  // namespace zuna_toolkit
