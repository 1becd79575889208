#include <array>
#include <iostream>
#include <memory>

#include "CL/change_log.h"
#include "CL/log_records.h"
#include "CL/text_form.h"
#include "cmn/data_error.h"
#include "cmn/file_format.h"
#include "cmn/version_probe.h"
#include "kit/cout_buffer.h"
#include "tests/faults/in_process/calls.h"
#include "tests/support/encrypted.h"
#include "tests/support/sample_models.h"
#include "zuna_json/object.h"
#include "zuna_json/writer.h"
#include "zuna_midi/show_data.h"
#include "zuna_midi/show_records.h"
#include "zuna_midi/text_form.h"

namespace public_calls {

namespace {

using zuna_test::WrittenAt;

const std::string kLong = "a text that does not fit into a string object";
constexpr cmn::FileVersion kText{2, 0};
constexpr cmn::FileVersion kBinary{1, 2};

template <typename Number>
std::string T(Number number) {
  return std::to_string(number) + " ";
}

/// The text of a model.
template <typename Model>
std::string Text(const Model& model) {
  return TextOf([&](std::ostream& os) { model.WriteBinary(os, kText); });
}

template <typename Model>
void AddModel(Calls& calls, const std::string& name, const Model& model) {
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 1}, kBinary, kText}) {
    calls.AddReader(name + "(istream)", WrittenAt(model, version),
                    [](std::istream& is) { return Text(Model(is)); });
    calls.AddWriter(name + "::WriteBinary", [=](std::ostream& os) { model.WriteBinary(os, version); });
  }
  calls.Add(name + ", copied, moved and assigned", [model] {
    Model copy(model);
    Model other;
    other = copy;
    copy = std::move(other);
    const Model moved(std::move(copy));
    return Text(moved);
  });
}

/// All that a writer of JSON can write.
void WriteJson(std::ostream& os) {
  using zuna_json::Writer;
  Writer json(os);
  json.OpenObject(Writer::Style::kLines);
  json.Key("list");
  json.OpenList();
  json.Element();
  json.Number(std::uint32_t{1});
  json.Element();
  json.Number(std::int32_t{-1});
  json.Element();
  json.Float(1.5F);
  json.Element();
  json.Text(kLong + "\n");
  json.Element();
  json.Text(kLong + "\xFF");
  json.Row(std::array<std::uint32_t, 2>{1, 2});
  json.CloseList();
  json.NewLine();
  json.Raw(kLong);
  json.CloseObject();
  json.Flush();
}

/// The text of an object with one key.
std::string ReadJson(std::istream& is) {
  const zuna_json::ObjectType type{[](void* target, zuna_json::BoundObject& object) {
                                     object.Add({"key", zuna_json::ValueKind::kText, target,
                                                 [](void* text, std::string&& value) -> const char* {
                                                   *static_cast<std::string*>(text) = std::move(value);
                                                   return nullptr;
                                                 }});
                                   },
                                   nullptr};
  std::string text;
  zuna_json::ReadObject(is, {}, type, &text);
  return text;
}

template <typename Model, typename Read>
void AddTextForm(Calls& calls, const std::string& name, const Model& model, Read read) {
  const auto write = [=](std::ostream& os) { WriteTextForm(os, model, kBinary); };
  calls.AddWriter(name + ", WriteTextForm", write);
  calls.AddReader(name + ", ReadTextForm", TextOf(write), [=](std::istream& is) {
    cmn::FileVersion stated;
    return Text(read(is, stated));
  });
}

void AddJson(Calls& calls) {
  calls.AddWriter("Writer", WriteJson);
  calls.AddReader("ReadObject", "{\"key\": \"" + kLong + "\"}", ReadJson);
  calls.AddProbe("StatedInText", R"({"kind": "showdata", "fileVersion": "1.2"})", [](std::istream& is) {
    const cmn::StatedType stated = cmn::StatedInText(is);
    return stated.kind.value_or("") + std::string(cmn::KindText(cmn::FileKind::kLog));
  });
  AddTextForm(calls, "ShowData", zuna_test::SampleShow(),
              [](std::istream& is, cmn::FileVersion& stated) { return zuna_midi::ReadTextForm(is, stated); });
  AddTextForm(calls, "ChangeLog", zuna_test::SampleLog(),
              [](std::istream& is, cmn::FileVersion& stated) { return CL::ReadTextForm(is, stated); });
}

std::string AddedSong() {
  zuna_midi::SongData song(kLong, kLong, 480, 7680);
  song.SetTimeline(std::make_shared<TL::Timeline>());
  zuna_midi::VoiceTrack track;
  track.name = kLong;
  song.voice_data->AddTrack(std::make_shared<zuna_midi::VoiceTrack>(track));
  zuna_midi::ShowData show;
  show.AddSongData(std::make_shared<zuna_midi::SongData>(song));
  return Text(show) + song.voice_data->GetTrack(0)->name;
}

std::string AddedSongLog() {
  CL::ChangeLog log;
  CL::SongLog song(kLong, kLong, 480, 7680);
  CL::SongLog other(song);
  other = song;
  song = std::move(other);
  log.AddSongLog(std::make_shared<CL::SongLog>(std::move(song)));
  const CL::ChangeLog& constant = log;
  return Text(log) + log.GetSongLog(kLong)->song_name + constant.GetSongLog(kLong)->song_name;
}

/// What an event tells by the functions of its bases, called as the base has them.
std::string TextOfPaired(CL::PairedEvent& event) {
  event.CL::PairedEvent::SetStartPosition(1);
  event.CL::PairedEvent::SetEndPosition(2);
  event.CL::PairedEvent::SetFloatValue(1.5);
  event.CL::PairedEvent::SetFloatValue(1.5F);
  event.CL::PairedEvent::SetIntValue(3);
  event.CL::PairedEvent::Reserved1();
  event.CL::PairedEvent::Reserved2();
  event.CL::PairedEvent::Reserved3();
  CL::DisplayRecord record;
  event.CL::PairedEvent::FillDisplayRecord(record);
  CL::DisplayWords words;
  event.CL::PairedEvent::ClearDisplayWords(words);
  return T(event.CL::PairedEvent::Position()) + T(event.CL::PairedEvent::StartPosition()) +
         T(event.CL::PairedEvent::EndPosition()) + T(event.CL::PairedEvent::value()) +
         T(event.CL::PairedEvent::IntValue()) + T(event.CL::PairedEvent::FloatValue()) +
         T(event.CL::PairedEvent::Reserved4()) + T(event.CL::PairedEvent::Reserved5()) +
         T(event.CL::PairedEvent::Span()) + T(record.x) + T(words[0]);
}

std::string TextOfAny(const cmn::ZunaEvent& event) {
  kit::CoutBuffer buffer;
  event.cmn::ZunaEvent::WriteString(buffer);
  return T(event.Position()) + T(event.EventCode()) + T(event.cmn::ZunaEvent::operator<(event)) +
         T(event.cmn::ZunaEvent::operator==(event)) + T(event.cmn::ZunaEvent::operator!=(event)) +
         T(event.cmn::ZunaEvent::PositionLess(1)) + T(event.cmn::ZunaEvent::PositionGreater(1)) +
         T(event.cmn::ZunaEvent::PositionEqual(1)) + T(event.cmn::ZunaEvent::PositionNotLess(1)) +
         T(event.cmn::ZunaEvent::PositionNotGreater(1));
}

template <typename Event>
void AddEvent(Calls& calls, const Event& event) {
  calls.AddWriter("event, WriteString", [event](std::ostream& os) { event.Event::WriteString(os); });
  calls.AddWriter("event, WriteBinary", [event](std::ostream& os) { event.Event::WriteBinary(os, kBinary); });
  calls.Add("event",
            [event] { return TextOfAny(event) + T(event.Event::EventCode()) + T(event.Event::Position()); });
}

template <typename Event, typename Value>
void AddPaired(Calls& calls, Value value) {
  AddEvent(calls, Event(0, 480, kLong, value));
  calls.Add("paired event", [value] {
    Event event(0, 480, kLong, value);
    return T(event.value()) + TextOfPaired(event);
  });
}

void AddEvents(Calls& calls) {
  AddPaired<CL::Vamp>(calls, 2);
  AddPaired<CL::Repeat>(calls, 2);
  AddPaired<CL::Cut>(calls, 2);
  AddPaired<CL::Click>(calls, 2);
  AddPaired<CL::Fermata>(calls, 2);
  AddPaired<CL::Transpose>(calls, 2);
  AddPaired<CL::TempoScale>(calls, 1.5F);
  AddEvent(calls, CL::Marker(1, kLong, kLong));
  AddEvent(calls, CL::Caesura(1, kLong));
  const std::shared_ptr<CL::SongLog> song = zuna_test::SampleLog().GetSongLog("2b");
  calls.AddWriter("SongLog::WriteStringDetailed",
                  [song](std::ostream& os) { song->WriteStringDetailed(os, 2); });
  calls.AddWriter("VoiceMessage::WriteString", [](std::ostream& os) {
    const std_midi::VoiceMessage message{0x90, 60, 100};
    message.WriteString(os);
  });
}

void AddVersions(Calls& calls) {
  for (const cmn::FileVersion version : {kBinary, kText}) {
    calls.AddProbe("get_showdata_version", WrittenAt(zuna_test::SampleShow(), version), [](std::istream& is) {
      return cmn::VersionText(cmn::get_showdata_version(Throwing(is)));
    });
    calls.AddProbe("get_logdata_version", WrittenAt(zuna_test::SampleLog(), version),
                   [](std::istream& is) { return cmn::VersionText(cmn::get_logdata_version(Throwing(is))); });
  }
  calls.Add("versions", [] {
    constexpr cmn::FileKind kKind = cmn::FileKind::kLog;
    return cmn::VersionText(cmn::ParseVersion("1.2").value()) + std::string(cmn::KindName(kKind)) +
           std::string(cmn::BinaryMagic(kKind)) + T(cmn::SupportedVersions(kKind).size());
  });
}

void AddRecords(Calls& calls) {
  constexpr std::size_t kHeader = 4 + 4 + 1 + 1;
  calls.Add("ReadSong", [bytes = WrittenAt(zuna_test::SampleShow(), kBinary)] {
    std::size_t offset = kHeader;
    zuna_midi::ShowHead head = zuna_midi::ReadShowHead(bytes, offset, kBinary);
    head.show.AddSongData(zuna_midi::ReadSong(bytes, offset, kBinary));
    return Text(head.show) + T(offset);
  });
  calls.Add("ReadBeginningOfSong", [bytes = WrittenAt(zuna_test::SampleShow(), kBinary)] {
    std::size_t offset = kHeader;
    zuna_midi::ShowHead head = zuna_midi::ReadShowHead(bytes, offset, kBinary);
    const auto song = zuna_midi::ReadBeginningOfSong(bytes.substr(0, bytes.size() - 12), offset, kBinary);
    head.show.AddSongData(song);
    return Text(head.show) + T(offset);
  });
  calls.Add("ReadBeginningOfSongLog", [bytes = WrittenAt(zuna_test::SampleLog(), kBinary)] {
    std::size_t offset = kHeader;
    CL::LogHead head = CL::ReadLogHead(bytes, offset, kBinary);
    head.log.AddSongLog(CL::ReadBeginningOfSongLog(bytes.substr(0, bytes.size() - 12), offset, kBinary));
    return Text(head.log) + T(offset);
  });
  calls.Add("ReadSongLog", [bytes = WrittenAt(zuna_test::SampleLog(), kBinary)] {
    std::size_t offset = kHeader;
    CL::LogHead head = CL::ReadLogHead(bytes, offset, kBinary);
    head.log.AddSongLog(CL::ReadSongLog(bytes, offset, kBinary));
    return Text(head.log) + T(offset);
  });
  calls.Add("ListFields", [show = WrittenAt(zuna_test::SampleShow(), kBinary),
                           log = WrittenAt(zuna_test::SampleLog(), kBinary)] {
    std::string paths;
    const cmn::TakeField take = [&](const cmn::PlacedField& field) {
      paths.append(field.record).append(field.key) += T(field.end);
    };
    zuna_midi::ListFields(show, take);
    CL::ListFields(log, take);
    return paths;
  });
}

void AddErrors(Calls& calls) {
  calls.Add("DataError", [] {
    cmn::DataError::Parts parts;
    parts.song = kLong;
    parts.field = kLong;
    parts.offset = 7;
    parts.problem = kLong;
    const cmn::DataError error(std::move(parts));
    const cmn::DataError other(kLong, kLong);
    return *error.song() + error.field() + T(*error.offset()) + error.problem() + other.remedy() +
           error.what();
  });
}

}  // namespace

Calls OfTheCore() {
  Calls calls;
  AddModel(calls, "ShowData", zuna_test::SampleShow());
  AddModel(calls, "ChangeLog", zuna_test::SampleLog());
  AddJson(calls);
  calls.Add("AddSongData", AddedSong);
  calls.Add("AddSongLog", AddedSongLog);
  calls.Add("Timeline", [] {
    const TL::BarsBeats label = zuna_test::SampleLabel(0, "12a", 0);
    return std::string(label.bar_number()) + T(TL::Meter{0, 6, 8, 36, 8}.notated_32_per_click()) +
           T(TL::Tempo{0, 500000}.bpm(24)) + T(TL::Tempo{0, 500000}.tick_time(480));
  });
  AddEvents(calls);
  AddVersions(calls);
  AddRecords(calls);
  AddErrors(calls);
  return calls;
}

}  // namespace public_calls
