// The fields of a file with the bytes that they take in its plaintext (docs/text-form.md).
#include "toolkit/document/field_list.h"

#include <algorithm>
#include <array>
#include <istream>
#include <string_view>

#include "CL/log_records.h"
#include "cmn/file_format.h"
#include "kit/stream_size.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/document/internal/field_lists.h"
#include "toolkit/words.h"
#include "zuna_midi/show_records.h"

namespace zuna_toolkit {

namespace {

constexpr cmn::FileVersion kTextFormVersion{2, 0};

std::string PlaintextOf(OpenedFile& file) {
  Rewind(file.stream());
  return StartOf(file.stream(), static_cast<std::size_t>(kit::BytesAhead(*file.stream().rdbuf())));
}

/// What a text that cannot be read is meant to hold. A byte order mark before it is passed over.
FileType TypeInText(std::istream& text) {
  constexpr std::size_t kMarkSize = 3;  // bytes
  const std::string start = StartOf(text, kMarkSize);
  text.seekg(static_cast<std::streamoff>(start.size() - WithoutByteOrderMark(start).size()));
  const bool is_log = cmn::StatedInText(text).kind == cmn::KindText(cmn::FileKind::kLog);
  return {is_log ? cmn::FileKind::kLog : cmn::FileKind::kShow, kTextFormVersion};
}

bool IsText(const FieldSource& source) {
  return !source.type.is_legacy() && source.plaintext.starts_with(cmn::kTextFormStart);
}

/// The part of a text form that its reader accepts.
std::string_view AcceptedText(const FieldSource& source) {
  const std::string_view text = source.plaintext;
  if (!source.damage) return text;
  const std::uint64_t offset = source.damage->parts().offset.value_or(0);
  return text.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(offset, text.size())));
}

void ListReadable(const FieldSource& source, const cmn::TakeField& take) {
  if (IsText(source)) return ListTextFields(AcceptedText(source), take);
  if (source.type.is_legacy()) return ListLegacyFields(source.type.kind, source.plaintext, take);
  if (source.type.is_log()) return CL::ListFields(source.plaintext, take);
  zuna_midi::ListFields(source.plaintext, take);
}

/// Whether an error says that a file is no show and no log.
bool IsOfOtherKind(ErrorCode code) {
  constexpr std::array kOtherKinds = {ErrorCode::kNotAShowOrLog, ErrorCode::kNotEncrypted,
                                      ErrorCode::kMidiFile, ErrorCode::kArchive, ErrorCode::kEncryptedTwice};
  return std::find(kOtherKinds.begin(), kOtherKinds.end(), code) != kOtherKinds.end();
}

}  // namespace

FieldSource FieldSourceOf(OpenedFile& file) {
  FieldSource source;
  try {
    source.type = ReadDocument(file).type();
  } catch (const Error& error) {
    if (IsOfOtherKind(error.code())) throw;
    source.damage = error;
    source.type = error.code() == ErrorCode::kTextError ? TypeInText(file.stream()) : TypeByMark(file);
  }
  source.plaintext = PlaintextOf(file);
  return source;
}

void ListFields(const FieldSource& source, const cmn::TakeField& take) {
  std::uint64_t end = 0;
  ListReadable(source, [&](const cmn::PlacedField& field) {
    end = field.end;
    take(field);
  });
  const std::uint64_t size = source.plaintext.size();
  if (end < size) take({end, size, "", "unread", {}});
}

}  // namespace zuna_toolkit
