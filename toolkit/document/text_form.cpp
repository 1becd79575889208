// The text form of documents of every version.
#include "toolkit/document/text_form.h"

#include <algorithm>
#include <cstdint>
#include <ios>
#include <iterator>
#include <span>
#include <sstream>
#include <utility>

#include "CL/text_form.h"
#include "cmn/data_error.h"
#include "cmn/file_format.h"
#include "kit/error.h"
#include "toolkit/document/internal/complete_songs.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/document/internal/legacy_text.h"
#include "toolkit/internal/translate.h"
#include "toolkit/words.h"
#include "zuna_midi/text_form.h"

namespace zuna_toolkit {

namespace {

class TextWriter {
 public:
  TextWriter(std::ostream& os, cmn::FileVersion version) : os_(os), version_(version) {}

  void operator()(const LegacyShow& legacy) const { WriteLegacyText(os_, legacy.show); }
  void operator()(const LegacyLog& legacy) const { WriteLegacyText(os_, legacy.log); }
  void operator()(const zuna_midi::ShowData& show) const { zuna_midi::WriteTextForm(os_, show, version_); }
  void operator()(const CL::ChangeLog& log) const { CL::WriteTextForm(os_, log, version_); }

 private:
  std::ostream& os_;
  cmn::FileVersion version_;
};

/// What `text` states to be; a show of a current version where it does not say, so that the reader of shows
/// tells what is missing.
FileType StatedTypeOf(std::istream& is) {
  const cmn::StatedType stated = cmn::StatedInText(is);
  is.clear();
  is.seekg(0);
  const bool is_log = stated.kind == cmn::KindText(cmn::FileKind::kLog);
  return {is_log ? cmn::FileKind::kLog : cmn::FileKind::kShow,
          cmn::ParseVersion(stated.version.value_or("")).value_or(cmn::kDefaultVersion)};
}

Document Read(std::istream& is, const std::string& name) {
  FileType type = StatedTypeOf(is);
  if (type.is_legacy()) {
    if (type.is_log()) return {LegacyLog{.log = ReadLegacyTextLog(is)}, kLegacyVersion, name};
    return {LegacyShow{.show = ReadLegacyTextShow(is)}, kLegacyVersion, name};
  }
  if (type.is_log()) {
    CL::ChangeLog log = CL::ReadTextForm(is, type.version);
    return {std::move(log), type.version, name};
  }
  zuna_midi::ShowData show = zuna_midi::ReadTextForm(is, type.version);
  return {std::move(show), type.version, name};
}

/// Line and column, both from 1 and the column in bytes, of an offset.
std::string LineAndColumn(std::string_view text, std::uint64_t offset) {
  const std::string_view before = text.substr(0, static_cast<std::size_t>(offset));
  const std::size_t line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
  const std::size_t start = before.rfind('\n') + 1;  // 0 where there is none
  return "line " + std::to_string(line) + ", column " + std::to_string(before.size() - start + 1);
}

/// Another version may be right, and this release too old for it.
std::string RemedyOf(const cmn::DataError& error) {
  if (dynamic_cast<const cmn::UnsupportedVersionError*>(&error) != nullptr) {
    return "correct it, or use a newer release: " + error.remedy();
  }
  return error.remedy().empty() ? "correct the text" : error.remedy();
}

Error TextError(ErrorCode code, const cmn::DataError& error, std::string_view text, const std::string& name) {
  ErrorParts parts;
  parts.file = name;
  parts.song = error.song().value_or("");
  parts.field = error.field();
  parts.offset = error.offset();
  parts.problem = (error.field().empty() ? "" : error.field() + ": ") + error.problem();
  if (error.offset()) parts.problem += " (" + LineAndColumn(text, *error.offset()) + ")";
  parts.remedy = RemedyOf(error);
  return {code, std::move(parts)};
}

}  // namespace

void WriteTextForm(const Document& document, std::ostream& os) {
  RequireCompleteSongs(document);
  OnFile(document.name(), [&] {
    try {
      std::visit(TextWriter(os, document.type().version), document.model());
    } catch (const std::ios_base::failure&) {  // of `os`: nothing is read here
      throw kit::IoError("The output stream cannot be written; check the free space");
    }
  });
}

std::string LeftOutOfText(const Document& document) {
  std::string left_out;
  const auto add = [&](std::size_t count, const char* one, const char* many) {
    if (count != 0) AppendListed(left_out, Counted(count, one, many));
  };
  if (const auto* show = document.As<LegacyShow>()) {
    add(show->replaced_songs, "song that a later one replaces", "songs that later ones replace");
    add(show->replaced_sequences, "list that a later one replaces", "lists that later ones replace");
    add(show->trailing_bytes, "byte after the last song", "bytes after the last song");
  }
  if (const auto* log = document.As<LegacyLog>()) {
    add(log->replaced_songs, "song that a later one replaces", "songs that later ones replace");
    add(log->replaced_sequences, "list that a later one replaces", "lists that later ones replace");
  }
  return left_out;
}

bool IsTextForm(OpenedFile& file) {
  constexpr std::size_t kProbe = 4096;  // bytes
  return !VersionForBuild(StartOf(file.stream(), kProbe)).empty();
}

Document ReadTextForm(OpenedFile& file) {
  Rewind(file.stream());
  return ReadTextForm(std::string(std::istreambuf_iterator<char>(file.stream()), {}), file.name());
}

Document ReadTextForm(std::string_view text, const std::string& name) {
  text = WithoutByteOrderMark(text);
  std::istringstream is{std::string(text)};
  return OnFile(name, [&] {
    try {
      return Read(is, name);
    } catch (const cmn::UnsupportedVersionError& error) {
      throw TextError(ErrorCode::kUnsupportedVersion, error, text, name);
    } catch (const cmn::DataError& error) {
      throw TextError(ErrorCode::kTextError, error, text, name);
    }
  });
}

void RequireCorrectText(std::span<const std::uint8_t> plaintext, const std::string& name) {
  const std::string_view text = AsText(plaintext);
  if (!BeginsLikeTextForm(text)) return;
  if (const std::string version = VersionForBuild(text); !version.empty()) {
    throw Error(ErrorCode::kTextError, name, "is plain text of version " + version, kUseBuild);
  }
  std::istringstream is{std::string(text)};
  OnFile(name, [&] {
    try {
      RequireReadableText(is);
    } catch (const cmn::UnsupportedVersionError& error) {
      throw TextError(ErrorCode::kUnsupportedVersion, error, text, name);
    } catch (const cmn::DataError& error) {
      throw TextError(ErrorCode::kTextError, error, text, name);
    }
  });
}

}  // namespace zuna_toolkit
