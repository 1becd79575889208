#include "cli/files/file_type.h"

#include <istream>
#include <string_view>

#include "CL/change_log.h"
#include "cli/base/errors.h"
#include "cli/base/version_text.h"
#include "cli/files/text_form.h"
#include "cli/shows/show_file.h"
#include "cmn/version_probe.h"
#include "format_converter/version0/containers/change_log_header.h"

namespace zuna_cli {

namespace {

constexpr cmn::FileVersion kLegacy{0, 0};

bool IsLegacyLog(std::istream& stream) {
  return StartOf(stream, version0::kChangeLogMagic.size()) == version0::kChangeLogMagic;
}

[[noreturn]] void FailAsNoFile(const InputFile& file) {
  throw Failure(ExitCode::kBadInput, file.name(),
                "is no show and no log of any version; give an undamaged file");
}

}  // namespace

std::string TypeText(const FileType& type) {
  return std::string(type.is_log() ? "a log" : "a show") + " of version " + VersionText(type.version);
}

void RequireReadableText(std::istream& stream, const std::string& name) {
  const std::string start = StartOf(stream, kTextFormProbe);
  if (!BeginsLikeTextForm(start) || IsLegacyShow(stream)) return;
  if (start.front() != '{') throw Failure(ExitCode::kBadInput, name, kNotAtStart);
  const bool states_log = cmn::get_logdata_version(stream) != kLegacy;
  if (states_log || start.find("\"logdata\"") != std::string::npos) {
    const CL::ChangeLog log(stream);
  } else {
    const zuna_midi::ShowData show(stream);
  }
}

FileType TypeOf(InputFile& file) {
  return OnFile(file.name(), [&]() -> FileType {
    std::iostream& stream = file.stream();
    const cmn::FileVersion show_version = cmn::get_showdata_version(stream);
    if (show_version != kLegacy) return {FileKind::kShow, show_version};
    const cmn::FileVersion log_version = cmn::get_logdata_version(stream);
    if (log_version != kLegacy) return {FileKind::kLog, log_version};
    if (IsLegacyLog(stream)) return {FileKind::kLog, kLegacy};
    RequireReadableText(stream, file.name());
    return {FileKind::kShow, kLegacy};
  });
}

FileType RequireLegacy(InputFile& file) {
  const FileType type = TypeOf(file);
  if (type.is_legacy()) return type;
  throw Failure(ExitCode::kBadInput, file.name(), "is " + TypeText(type) + ", not 0.0; use convert or down");
}

FileType RequireCurrent(InputFile& file) {
  const FileType type = TypeOf(file);
  if (!type.is_legacy()) return type;
  if (!type.is_log() && !IsLegacyShow(file.stream())) FailAsNoFile(file);
  throw Failure(ExitCode::kBadInput, file.name(),
                "is " + TypeText(type) + ", not a current one; use up first");
}

cmn::FileVersion RequireShow(InputFile& file) {
  const FileType type = TypeOf(file);
  if (type.is_log()) {
    throw Failure(ExitCode::kBadInput, file.name(), "is a log, and this command takes shows; give a show");
  }
  if (type.is_legacy() && !IsLegacyShow(file.stream())) FailAsNoFile(file);
  return type.version;
}

}  // namespace zuna_cli
