// The heads of a damaged legacy log and of its songs (docs/format-0.md, "change_log_header" and "song_log").
#include "toolkit/rescue/internal/legacy_log_head.h"

#include <algorithm>

#include "format_converter/version0/containers/change_log_header.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kLogLengthOffset = 4;  // after the magic
constexpr std::size_t kIdentifierSize = 16;
constexpr std::size_t kIdentifierOffset = kLogLengthOffset + 4;
constexpr std::size_t kTextsOffset = kIdentifierOffset + kIdentifierSize;
constexpr std::size_t kZerosOfDamage = 4;  // in an identifier whose other bytes are random
constexpr unsigned kBitsOfATag = 16;

constexpr const char* kLabel = "the log's label";
constexpr const char* kShowName = "the show's name";
constexpr const char* kTagPair = "the log's tag pair";

bool HasZero(std::string_view text) { return text.find('\0') != std::string_view::npos; }

bool IsZero(std::string_view bytes) { return bytes.find_first_not_of('\0') == std::string_view::npos; }

/// Takes `text` up to its first zero byte, which no person has typed.
void TakeText(std::string& field, std::string_view text, const char* what,
              std::vector<std::string>& missing) {
  field = text.substr(0, text.find('\0'));
  if (HasZero(text)) missing.push_back(field.empty() ? what : "a part of " + std::string(what));
}

/// Takes label, show name and tag pair, and tells what of them is missing.
void TakeLogTexts(LogHead& head, std::string_view bytes, std::size_t first_song) {
  RecordCursor in(bytes.substr(0, first_song), kTextsOffset);
  const std::string_view label = in.Text();
  const std::size_t label_end = in.at();
  const bool has_label = in.ok() && !label.empty();
  const std::string_view show_name = in.Text();
  const std::uint32_t tags = in.Number(4);
  const bool meets_song = in.ok() && (in.at() == first_song || BeginsSongLog(bytes, in.at()));
  if (meets_song || (in.ok() && IsNumber(label) && IsNumber(show_name))) {
    TakeText(head.log.log_label, label, kLabel, head.missing);
    TakeText(head.log.show_name, show_name, kShowName, head.missing);
    if (tags == 0 && show_name.ends_with('\0')) head.missing.emplace_back(kTagPair);
    head.log.log_tag_pair = {static_cast<std::uint16_t>(tags),
                             static_cast<std::uint16_t>(tags >> kBitsOfATag)};
    head.read_end = head.end = in.at();
    return;
  }
  head.read_end = std::min(kTextsOffset, first_song);
  head.end = first_song;
  head.missing = {kShowName, kLabel, kTagPair};
  if (!has_label || HasZero(label)) return;
  head.log.log_label = label;
  head.read_end = label_end;
  head.missing = {kShowName, kTagPair};
}

/// Whether zeros that no writer writes are in the identifier, or reach into it from before or after. A log
/// that has got no identifier yet is written with zeros only.
bool HasZerosInIdentifier(std::string_view bytes, bool has_texts) {
  const std::string_view identifier = bytes.substr(kIdentifierOffset, kIdentifierSize);
  const std::string_view length = bytes.substr(kLogLengthOffset, kIdentifierOffset - kLogLengthOffset);
  const std::string zeros(kZerosOfDamage, '\0');
  if (IsZero(identifier) && bytes.starts_with(version0::kChangeLogMagic) && length != zeros && has_texts)
    return false;
  if (identifier.find(zeros) != std::string_view::npos) return true;
  if (length == zeros && identifier.front() == 0) return true;
  return !has_texts && identifier.back() == 0 && bytes.substr(kTextsOffset).starts_with('\0');
}

/// Takes the bytes of the identifier that are there, whatever the doubt about them.
void TakeIdentifier(LogHead& head, std::string_view bytes) {
  const bool has_texts = head.read_end > kTextsOffset;
  const bool is_there = bytes.size() >= kTextsOffset;
  const bool has_zeros = is_there && HasZerosInIdentifier(bytes, has_texts);
  const std::string_view bytes_of_it = is_there ? bytes.substr(kIdentifierOffset, kIdentifierSize) : "";
  if (!is_there || (has_zeros && IsZero(bytes_of_it))) {
    head.missing.emplace_back("the log's identifier");
    return;
  }
  kit::UUID::Bytes identifier{};
  std::copy_n(bytes_of_it.begin(), kIdentifierSize, identifier.begin());
  head.log.identifier = kit::UUID(identifier);
  const bool has_magic = bytes.starts_with(version0::kChangeLogMagic);
  const std::uint64_t length = RecordCursor(bytes, kLogLengthOffset).Number(4);
  const bool is_zero = length == 0;  // and the identifier does not begin with a zero
  const bool has_wrong_front = !has_magic && !is_zero && length != bytes.size() - kIdentifierOffset;
  if (has_zeros) head.doubt = "zeros are in its identifier or before it: it may be damaged";
  if (has_wrong_front) head.doubt = "its magic and its length are wrong, and its identifier may be";
}

}  // namespace

std::uint64_t StatedLogEnd(std::string_view bytes) {
  const std::uint64_t length = RecordCursor(bytes, kLogLengthOffset).Number(4);
  return length == 0 ? 0 : kIdentifierOffset + length;
}

LogHead ReadLogHead(std::string_view bytes, std::size_t first_song) {
  LogHead head;
  TakeLogTexts(head, bytes, first_song);
  TakeIdentifier(head, bytes);
  return head;
}

SongLogHead ReadSongLogHead(RecordCursor& in) {
  SongLogHead head{};
  head.record_length = in.Number(4);
  head.number = in.Text();
  head.name = in.Text();
  head.length = in.Take(4);
  return head;
}

bool BeginsSongLog(std::string_view bytes, std::size_t at) {
  RecordCursor in(bytes, at);
  const SongLogHead head = ReadSongLogHead(in);
  return in.ok() && IsNumber(head.number) && IsTyped(head.name);
}

}  // namespace zuna_toolkit
