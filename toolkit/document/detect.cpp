// Tells shows and logs of all versions apart by their content.
#include <algorithm>
#include <functional>
#include <istream>
#include <numeric>
#include <span>
#include <sstream>
#include <vector>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "cmn/version_probe.h"
#include "format_converter/version0/containers/change_log_header.h"
#include "kit/stream_size.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/document/internal/legacy_damage.h"
#include "toolkit/document/internal/other_formats.h"
#include "toolkit/document/open.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"
#include "toolkit/words.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_toolkit {

namespace {

/// How many bytes decide whether a plaintext is meant to be a text form: more leading white space than this
/// is not looked through.
constexpr std::size_t kTextFormProbe = 4096;

Error NotAShowOrLog(const std::string& name) {
  return {ErrorCode::kNotAShowOrLog, name, "is no show and no log of any version", "give an undamaged file"};
}

/// Throws Error (kTextError) about the first byte of a text.
[[noreturn]] void ThrowAtBegin(const char* problem, const char* remedy) {
  ErrorParts parts;
  parts.problem = problem;
  parts.remedy = remedy;
  parts.offset = 0;
  throw Error(ErrorCode::kTextError, std::move(parts));
}

bool IsReadableLegacyShow(std::istream& stream) {
  Rewind(stream);
  bool readable = true;
  try {
    ReadUnmarkedShow(stream);
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    readable = false;
  }
  Rewind(stream);
  return readable;
}

FileType TypeOf(std::istream& stream) {
  const cmn::FileVersion show_version = cmn::get_showdata_version(stream);
  if (show_version != kLegacyVersion) return {cmn::FileKind::kShow, show_version};
  const cmn::FileVersion log_version = cmn::get_logdata_version(stream);
  if (log_version != kLegacyVersion) return {cmn::FileKind::kLog, log_version};
  if (StartOf(stream, version0::kChangeLogMagic.size()) == version0::kChangeLogMagic) {
    return {cmn::FileKind::kLog, kLegacyVersion};
  }
  RequireReadableText(stream);
  return {cmn::FileKind::kShow, kLegacyVersion};
}

/// Whether a text form that no probe recognises states that it is a log: the value of its key "kind".
bool StatesLog(std::string_view text) {
  constexpr std::string_view kKey = "\"kind\"";
  const std::size_t key = text.find(kKey);
  if (key == std::string_view::npos) return false;
  const std::size_t value = text.find_first_not_of(" \t\r\n:", key + kKey.size());
  return value != std::string_view::npos && text.substr(value).starts_with("\"logdata\"");
}

}  // namespace

void Rewind(std::istream& stream) {
  stream.exceptions(std::ios_base::goodbit);
  stream.clear();
  stream.seekg(0);
}

std::string StartOf(std::istream& stream, std::size_t size) {
  Rewind(stream);
  std::string start(size, '\0');
  stream.read(start.data(), static_cast<std::streamsize>(size));
  start.resize(static_cast<std::size_t>(stream.gcount()));
  Rewind(stream);
  return start;
}

bool BeginsLikeTextForm(std::string_view text) {
  text = WithoutByteOrderMark(text);
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && text[first] == cmn::kTextFormStart;
}

std::string VersionForBuild(std::string_view text) {
  constexpr cmn::FileVersion kEncryptedAsItIs{2, 0};
  text = WithoutByteOrderMark(text);
  if (!text.starts_with(cmn::kTextFormStart)) return "";
  std::istringstream stream{std::string(text.substr(0, kTextFormProbe))};
  const auto version = cmn::ParseVersion(cmn::StatedInText(stream).version.value_or(""));
  if (!version || version == kEncryptedAsItIs) return "";
  const bool is_known = cmn::IsSupported(cmn::FileKind::kShow, *version);  // Logs have no others.
  return is_known || version == kLegacyVersion ? cmn::VersionText(*version) : "";
}

ErrorCode DataCodeOf(std::istream& stream) {
  return BeginsLikeTextForm(StartOf(stream, kTextFormProbe)) ? ErrorCode::kTextError : ErrorCode::kBadContent;
}

void RequireReadableText(std::istream& stream) {
  const std::string start = StartOf(stream, kTextFormProbe);
  if (!BeginsLikeTextForm(start) || IsReadableLegacyShow(stream)) return;
  if (WithoutByteOrderMark(start) != start) {
    ThrowAtBegin("a byte order mark stands before the text (at byte 0)", "save the text without it");
  }
  if (start.front() != cmn::kTextFormStart) {
    ThrowAtBegin("blanks stand before the text (at byte 0)", "remove them, so that \"{\" comes first");
  }
  const bool is_show = cmn::get_showdata_version(stream) != kLegacyVersion;
  const bool is_log = cmn::get_logdata_version(stream) != kLegacyVersion;
  if (is_log || (!is_show && StatesLog(start))) {
    const CL::ChangeLog log(stream);
  } else {
    const zuna_midi::ShowData show(stream);
  }
}

void RequireNoDamagedMark(std::istream& stream) {
  const std::string start = StartOf(stream, kTextFormProbe);
  const auto begins_nearly = [&start](std::string_view mark) {
    if (start.size() < mark.size()) return false;
    const auto equal = std::inner_product(mark.begin(), mark.end(), start.begin(), std::size_t{0},
                                          std::plus<std::size_t>(), std::equal_to<>());
    return equal + 1 >= mark.size();
  };
  if (begins_nearly(cmn::BinaryMagic(cmn::FileKind::kShow)) ||
      begins_nearly(cmn::BinaryMagic(cmn::FileKind::kLog)) || begins_nearly(version0::kChangeLogMagic) ||
      start.find("\"fileVersion\"") != std::string::npos) {
    throw NotAShowOrLog("");
  }
}

void RequireEncryptedOrLegacySong(OpenedFile& file) {
  if (HoldsLegacySong(file.stream())) return;
  constexpr std::size_t kProbe = 512;   // bytes, which tell other formats
  constexpr std::size_t kMarkSize = 8;  // bytes of them, which encrypted files have in common
  const std::string start = StartOf(file.stream(), kProbe);
  const std::vector<std::uint8_t> bytes(start.begin(), start.end());
  OnFile(file.name(), [&] {
    if (file.is_encrypted()) return RequireEncryptedOnce(bytes);
    RequireNoOtherFormat(start);
    const auto mark = std::span(bytes).first(std::min(bytes.size(), kMarkSize));
    const zuna_sec::TwoFishCipherStream refused(std::vector(mark.begin(), mark.end()), {}, {});
  });
}

void RequireEncryptedOnce(std::span<const std::uint8_t> plaintext) {
  if (!IsEncrypted(plaintext)) return;
  throw Error(ErrorCode::kEncryptedTwice, "", "was encrypted twice", "use decrypt first");
}

version0::ShowData ReadUnmarkedShow(std::istream& stream) {
  Rewind(stream);
  version0::ShowData show(stream);
  if (show.songs.empty() && kit::BytesAhead(*stream.rdbuf()) > 0) throw NotAShowOrLog("");
  return show;
}

FileType TypeByMark(OpenedFile& file) {
  return OnFile(
      file.name(), [&] { return TypeOf(file.stream()); }, DataCodeOf(file.stream()));
}

FileType Detect(OpenedFile& file) {
  const FileType type = TypeByMark(file);
  if (!LacksMark(type) || IsReadableLegacyShow(file.stream())) return type;
  RequireEncryptedOrLegacySong(file);
  throw NotAShowOrLog(file.name());
}

}  // namespace zuna_toolkit
