// Checks logs: current and legacy ones.
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "kit/format.h"
#include "toolkit/checking/internal/check_models.h"
#include "toolkit/document/internal/complete_songs.h"

namespace zuna_toolkit {

namespace {

/// A list of edits.
struct EditList {
  std::string_view name;  ///< as the text form calls it
  std::string_view one;   ///< what people call an edit of it
};

std::string EditText(const EditList& list, std::uint32_t tick) {
  return "the " + std::string(list.one) + " at " + std::to_string(tick);
}

/// Checks the edits of one song.
class EditCheck {
 public:
  EditCheck(std::uint32_t song_length, const SongFindings& findings)
      : song_length_(song_length), findings_(findings) {}

  /// Edits that reach from one position to another. `check_value(edit, text, place)` checks their values.
  template <typename Edit, typename CheckValue>
  void CheckPaired(const EditList& list, const std::vector<Edit>& edits, CheckValue check_value) const {
    for (std::size_t i = 0; i < edits.size(); ++i) {
      const Edit& edit = edits[i];
      const Place place{.list = list.name, .index = i, .tick = edit.start};
      CheckReach(list, edit.start, edit.end, place);
      if constexpr (requires { edit.label; }) CheckLabel(list, edit.label, place);
      check_value(edit, place);
    }
  }

  template <typename Edit>
  void CheckPaired(const EditList& list, const std::vector<Edit>& edits) const {
    CheckPaired(list, edits, [](const Edit&, const Place&) {});
  }

  /// Edits whose value is a count.
  template <typename Edit>
  void CheckCounted(const EditList& list, const std::vector<Edit>& edits, FindingCode code) const {
    CheckPaired(list, edits, [&](const Edit& edit, const Place& place) {
      const int count = IntegerOf(edit);
      if (count > 0) return;
      findings_.Add(code, EditText(list, edit.start) + " has the number " + std::to_string(count), place);
    });
  }

  template <typename Edit>
  void CheckTempoScales(const std::vector<Edit>& edits) const {
    const EditList list{"tempoScales", "tempo scale"};
    CheckPaired(list, edits, [&](const Edit& edit, const Place& place) {
      const double factor = FloatOf(edit);
      if (std::isfinite(factor) && factor > 0) return;
      findings_.Add(FindingCode::kTempoScale,
                    EditText(list, edit.start) + kit::format(" has the factor %g", factor), place);
    });
  }

  void CheckMarker(std::size_t index, std::uint32_t tick, const std::string& text) const {
    const Place place{.list = "markers", .index = index, .tick = tick};
    CheckBeyond(kMarkers, tick, tick, place);
    findings_.CheckText(text, "the text of " + EditText(kMarkers, tick), place);
  }

  void CheckCaesura(std::size_t index, std::uint32_t tick) const {
    CheckBeyond(kCaesuras, tick, tick, {.list = "caesuras", .index = index, .tick = tick});
  }

  void CheckLabel(const EditList& list, const std::string& label, const Place& place) const {
    findings_.CheckText(label, "the label of " + EditText(list, place.tick.value_or(0)), place);
  }

  static constexpr EditList kMarkers{"markers", "marker"};
  static constexpr EditList kCaesuras{"caesuras", "caesura"};

 private:
  static int IntegerOf(const CL::PairedEvent& edit) { return static_cast<int>(edit.value()); }
  static double FloatOf(const CL::PairedEvent& edit) { return edit.value(); }
  template <typename Value, std::uint8_t Code>
  static int IntegerOf(const version0::PairedEvent<Value, Code>& edit) {
    return edit.value;
  }
  static double FloatOf(const version0::TempoScaleV0& edit) { return static_cast<double>(edit.value); }

  void CheckReach(const EditList& list, std::uint32_t start, std::uint32_t end, const Place& place) const {
    if (end < start) {
      findings_.Add(FindingCode::kEditReversed, EditText(list, start) + " ends at " + std::to_string(end),
                    place);
    }
    CheckBeyond(list, start, end, place);
  }

  void CheckBeyond(const EditList& list, std::uint32_t start, std::uint32_t end, const Place& place) const {
    if (!IsBeyond(start, song_length_) && !IsBeyond(end, song_length_)) return;
    const std::string reach = start == end ? " is" : " reaches to " + std::to_string(end) + ',';
    findings_.Add(
        FindingCode::kEditBeyondEnd,
        EditText(list, start) + reach + " after the end of the song at " + std::to_string(song_length_),
        place);
  }

  std::uint32_t song_length_;
  const SongFindings& findings_;
};

void CheckSong(const version0::SongLogV0& song, const SongFindings& findings) {
  CheckSongFields(song.songNumber_, song.songName_, song.songLength_, findings);
  const EditCheck check(song.songLength_, findings);
  check.CheckCounted({"vamps", "vamp"}, song.vamps, FindingCode::kVampCount);
  check.CheckCounted({"repeats", "repeat"}, song.repeats, FindingCode::kRepeatCount);
  check.CheckPaired({"cuts", "cut"}, song.cuts);
  check.CheckPaired({"transposes", "transposition"}, song.transposes);
  check.CheckTempoScales(song.tempo_scales);
  check.CheckPaired({"clicks", "click"}, song.clicks);
  for (std::size_t i = 0; i < song.score_markers.size(); ++i) {
    check.CheckMarker(i, song.score_markers[i].time, song.score_markers[i].text);
  }
  for (std::size_t i = 0; i < song.caesuras.size(); ++i) check.CheckCaesura(i, song.caesuras[i].time);
}

void CheckEdits(const CL::SongLog& song, const SongFindings& findings) {
  const EditCheck check(song.song_length, findings);
  check.CheckCounted({"vamps", "vamp"}, song.vamps->events, FindingCode::kVampCount);
  check.CheckCounted({"repeats", "repeat"}, song.repeats->events, FindingCode::kRepeatCount);
  check.CheckPaired({"cuts", "cut"}, song.cuts->events);
  check.CheckPaired({"transposes", "transposition"}, song.transposes->events);
  check.CheckTempoScales(song.tempo_scales->events);
  check.CheckPaired({"clicks", "click"}, song.clicks->events);
  check.CheckPaired({"fermatas", "fermata"}, song.fermatas->events);
  for (std::size_t i = 0; i < song.markers->events.size(); ++i) {
    const CL::Marker& marker = song.markers->events[i];
    check.CheckMarker(i, marker.position, marker.text);
    check.CheckLabel(EditCheck::kMarkers, marker.label,
                     {.list = "markers", .index = i, .tick = marker.position});
  }
  for (std::size_t i = 0; i < song.caesuras->events.size(); ++i) {
    const CL::Caesura& caesura = song.caesuras->events[i];
    check.CheckCaesura(i, caesura.position);
    check.CheckLabel(EditCheck::kCaesuras, caesura.label,
                     {.list = "caesuras", .index = i, .tick = caesura.position});
  }
}

void CheckSong(const CL::SongLog& song, const SongFindings& findings) {
  CheckSongFields(song.song_number, song.song_name, song.song_length, findings);
  if (song.division == 0) findings.Add(FindingCode::kDivisionUnknown, "the division is 0");
  if (IsComplete(&song)) return CheckEdits(song, findings);
  findings.Add(FindingCode::kSongIncomplete, "a list of edits is missing");
}

void CheckHeader(const std::string& show_name, const std::string& label, bool empty,
                 const FindingSink& sink) {
  const SongFindings whole("", sink);
  whole.CheckText(show_name, "the show name");
  whole.CheckText(label, "the log label");
  if (empty) whole.Add(FindingCode::kLogEmpty, "there are no songs");
}

}  // namespace

void CheckLog(const version0::ChangeLogV0& log, const FindingSink& sink) {
  CheckHeader(log.show_name, log.log_label, log.songs.empty(), sink);
  for (const auto& [number, song] : log.songs) CheckSong(song, SongFindings(number, sink));
}

void CheckLog(const CL::ChangeLog& log, const FindingSink& sink) {
  CheckHeader(log.show_name, log.log_label, log.song_logs().empty(), sink);
  for (const auto& [number, song] : log.song_logs()) {
    const SongFindings findings(number, sink);
    if (song) {
      CheckSong(*song, findings);
    } else {
      findings.Add(FindingCode::kSongIncomplete, "the song log is missing");
    }
  }
}

}  // namespace zuna_toolkit
