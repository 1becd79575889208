// The text form of legacy documents: what their fields need besides zuna_json/fields.h.
#include "toolkit/document/internal/legacy_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <ostream>
#include <set>
#include <utility>

#include "cmn/file_format.h"
#include "toolkit/document/internal/legacy_fields.h"
#include "toolkit/internal/legacy_sizes.h"

namespace zuna_toolkit {

namespace {

constexpr const char* kVersion = "0.0";

/// The columns of an event.
enum Column : std::size_t { kDelta, kTime, kStatus, kData1, kData2, kTrack, kColumns };

/// What keeps a song from being written into a legacy file that can be read back; null for nothing.
const char* ProblemOf(const version0::SongData& song) {
  if (song.tracks.size() > kMostLegacyTracks) return "a legacy song has at most 255 tracks";
  if (song.events.empty()) return "a legacy song has at least one event";
  std::set<std::uint8_t> tracks;
  for (const version0::TrackObject& track : song.tracks) tracks.insert(track.track_id);
  const bool known = std::all_of(song.events.begin(), song.events.end(),
                                 [&](const auto& events) { return tracks.contains(events.first); });
  return known ? nullptr : "the track of an event is not among the tracks of the song";
}

/// The songs of a legacy show or log, as zuna_json/fields.h needs them.
template <typename Parent>
struct Songs;

template <>
struct Songs<version0::ShowData> {
  static const auto& Of(const version0::ShowData& show) { return show.songs; }
  static std::shared_ptr<version0::SongData> New() { return std::make_shared<version0::SongData>(); }
  static const char* Add(version0::ShowData& show, const std::shared_ptr<version0::SongData>& song) {
    if (const char* problem = ProblemOf(*song)) return problem;
    if (show.songs.size() == kMostLegacySongs) return "a legacy show has at most 255 songs";
    const std::string number = song->song_number;
    return show.songs.try_emplace(number, std::move(*song)).second
               ? nullptr
               : "the show has another song of the same number";
  }
};

template <>
struct Songs<version0::ChangeLogV0> {
  static const auto& Of(const version0::ChangeLogV0& log) { return log.songs; }
  static std::shared_ptr<version0::SongLogV0> New() { return std::make_shared<version0::SongLogV0>(); }
  static const char* Add(version0::ChangeLogV0& log, const std::shared_ptr<version0::SongLogV0>& song) {
    const std::string number = song->songNumber_;
    return log.songs.try_emplace(number, std::move(*song)).second
               ? nullptr
               : "the log has another song of the same number";
  }
};

}  // namespace

// These two are not in an unnamed namespace, so that their VisitFields() is found.

class LegacyTextWriter : public zuna_json::FieldWriter<LegacyTextWriter> {
 public:
  using FieldWriter::FieldWriter;

  template <typename Parent>
  using ChildrenOf = Songs<Parent>;

  void ShortText(std::string_view key, const std::string& text) { Text(key, text); }

  /// One event a line, of all tracks in turn.
  void Events(std::string_view key, const version0::EventMap& events) {
    json().Key(key);
    json().OpenList();
    for (const auto& [track, of_track] : events) {
      for (const version0::EventObject& event : of_track) {
        json().Row(std::array<std::uint32_t, kColumns>{event.delta_time, event.abs_time, event.status_high,
                                                       event.data1, event.data2, event.track_id});
      }
    }
    json().CloseList();
  }
};

class LegacyTextBinder : public zuna_json::FieldBinder<LegacyTextBinder> {
 public:
  using FieldBinder::FieldBinder;

  template <typename Parent>
  using ChildrenOf = Songs<Parent>;

  template <typename Entry>
  static Entry NewEntry() {
    return BlankLegacy<Entry>();
  }

  void ShortText(std::string_view key, std::string& text) {
    object().Add(
        {key, zuna_json::ValueKind::kText, &text, [](void* target, std::string&& value) -> const char* {
           if (value.size() > kLongestLegacyText) return "a text of a legacy file has at most 255 bytes";
           *static_cast<std::string*>(target) = std::move(value);
           return nullptr;
         }});
  }

  void Events(std::string_view key, version0::EventMap& events) {
    static constexpr zuna_json::RowType kType{
        kColumns, {0xFFFFFFFF, 0xFFFFFFFF, 0xFF, 0xFF, 0xFF, 0xFF}, &TakeEvents};
    object().Add({key, zuna_json::ValueKind::kRows, &events, nullptr, nullptr, &kType});
  }

  /// The members that state the kind and the version.
  void KindAndVersion(cmn::FileKind& kind) {
    object().Add(
        {"kind", zuna_json::ValueKind::kString, &kind, [](void* target, std::string&& text) -> const char* {
           const bool same = text == cmn::KindText(*static_cast<cmn::FileKind*>(target));
           return same ? nullptr : "this is neither a show nor a log";
         }});
    object().Add(
        {"fileVersion", zuna_json::ValueKind::kString, &kind, [](void*, std::string&& text) -> const char* {
           return text == kVersion ? nullptr : "expected version \"0.0\"";
         }});
  }

 private:
  static void TakeEvents(void* target, const std::uint32_t* values, std::size_t count) {
    auto& events = *static_cast<version0::EventMap*>(target);
    for (const std::uint32_t* row = values; row != values + count * kColumns; row += kColumns) {
      const auto byte = [row](Column column) { return static_cast<std::uint8_t>(row[column]); };
      events[byte(kTrack)].emplace_back(row[kDelta], row[kTime], byte(kStatus), byte(kData1), byte(kData2),
                                        byte(kTrack));
    }
  }
};

namespace {

template <typename Model>
void Write(std::ostream& os, cmn::FileKind kind, const Model& model) {
  zuna_json::Writer json(os);
  LegacyTextWriter fields(json);
  json.OpenObject(zuna_json::Writer::Style::kLines);
  fields.Text("kind", cmn::KindText(kind));
  fields.Text("fileVersion", kVersion);
  VisitFields(fields, model);
  json.CloseObject();
  json.Raw("\n");
  json.Flush();
}

template <typename Model>
struct Form {
  cmn::FileKind kind;
  Model model;
};

template <typename Model>
Model Read(std::istream& is, cmn::FileKind kind) {
  Form<Model> form{kind, {}};
  const zuna_json::ObjectType type{[](void* target, zuna_json::BoundObject& object) {
                                     auto& bound = *static_cast<Form<Model>*>(target);
                                     LegacyTextBinder fields(object);
                                     fields.KindAndVersion(bound.kind);
                                     VisitFields(fields, bound.model);
                                   },
                                   nullptr};
  zuna_json::ReadObject(is, {}, type, &form);
  return std::move(form.model);
}

}  // namespace

void WriteLegacyText(std::ostream& os, const version0::ShowData& show) {
  Write(os, cmn::FileKind::kShow, show);
}
void WriteLegacyText(std::ostream& os, const version0::ChangeLogV0& log) {
  Write(os, cmn::FileKind::kLog, log);
}

version0::ShowData ReadLegacyTextShow(std::istream& is) {
  return Read<version0::ShowData>(is, cmn::FileKind::kShow);
}
version0::ChangeLogV0 ReadLegacyTextLog(std::istream& is) {
  return Read<version0::ChangeLogV0>(is, cmn::FileKind::kLog);
}

}  // namespace zuna_toolkit
