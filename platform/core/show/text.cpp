// The text form of a show (docs/format-2.md). Messages, which are nearly all of it, have loops of their own;
// the fields of all records are in show/fields.h.

#include "platform/core/show/file.h"

#include "platform/core/bytes/buffered_output.h"
#include "platform/core/file/text_field_binder.h"
#include "platform/core/file/text_field_writer.h"
#include "platform/core/json/numbers.h"
#include "platform/core/show/fields.h"
#include "zuna_midi/text_form.h"

namespace zuna_core {

namespace {

using Messages = decltype(zuna_midi::VoiceTrack::messages);

constexpr std::size_t kColumns = 4;  // time, status, data 1, data 2

void PutMessageRows(BufferedOutput& output, const Messages& messages) {
  constexpr std::size_t kLongest = 2 + 1 + zuna_json::kMaxDecimalSize + std::size_t{3} * (1 + 4) + 1;
  bool first = true;
  for (const auto& [time, message] : messages) {
    char* to = output.Room(kLongest);
    if (!first) *to++ = ',';
    first = false;
    *to++ = '\n';
    *to++ = '[';
    to = zuna_json::PutDecimal(to, time);
    for (const std::uint8_t byte : {message.status, message.data1, message.data2}) {
      *to++ = ',';
      to = zuna_json::PutDecimal(to, byte);
    }
    *to++ = ']';
    output.Commit(to);
  }
}

/// Takes the rows once their number is known, so that each voice takes just the memory that it needs.
void TakeMessageRows(void* target, const std::uint32_t* values, std::size_t count) {
  auto& messages = *static_cast<Messages*>(target);
  messages.reserve(count);
  for (const std::uint32_t* row = values; row != values + count * kColumns; row += kColumns) {
    const auto byte = [row](std::size_t column) { return static_cast<unsigned char>(row[column]); };
    messages.emplace_back(row[0], std_midi::VoiceMessage(byte(1), byte(2), byte(3)));
  }
}

}  // namespace

template <>
struct TextMessages<Messages> {
  static void Put(BufferedOutput& output, const Messages& messages) { PutMessageRows(output, messages); }

  static constexpr zuna_json::RowType kRowType{kColumns, {0xFFFFFFFF, 0xFF, 0xFF, 0xFF}, &TakeMessageRows};
};

void WriteTextShow(std::ostream& os, const zuna_midi::ShowData& show, cmn::FileVersion stated) {
  WriteTextForm(os, FileKind::kShow, stated, show);
}

zuna_midi::ShowData ReadTextShow(std::istream& is, std::string_view prefix) {
  return ReadTextForm<zuna_midi::ShowData>(is, prefix, {FileKind::kShow}).record;
}

}  // namespace zuna_core

namespace zuna_midi {

ShowData ReadTextForm(std::istream& is, cmn::FileVersion& stated) {
  auto form = zuna_core::ReadTextForm<ShowData>(is, {}, {.kind = cmn::FileKind::kShow, .any_version = true});
  stated = form.head.version;
  return std::move(form.record);
}

}  // namespace zuna_midi
