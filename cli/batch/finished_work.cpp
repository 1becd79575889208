// What a report says was finished.
#include "cli/batch/finished_work.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/shared/input.h"
#include "cli/shared/json_text.h"
#include "cli/terminal/standard_streams.h"
#include "kit/error.h"
#include "kit/file.h"
#include "toolkit/words.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kMarkSize = 64;                     // digits
constexpr std::size_t kMaxReport = std::size_t{1} << 31;  // bytes

/// The value of the key that `line` begins with, where it is a mark.
std::string_view MarkAt(std::string_view line, std::string_view key) {
  line.remove_prefix(key.size());
  const std::size_t begin = line.find_first_not_of(" :\"");
  if (begin == std::string_view::npos) return {};
  line.remove_prefix(begin);
  const bool is_whole = line.size() > kMarkSize && line[kMarkSize] == '"';
  return is_whole ? line.substr(0, kMarkSize) : std::string_view();
}

/// The path of the input in a line, as PathJson() has written it.
std::string_view PathIn(std::string_view line) {
  const std::size_t begin = line.find("\"path\": ");
  const std::size_t end = line.find(", \"digest\"");
  if (begin == std::string_view::npos || end == std::string_view::npos || end < begin) return {};
  return line.substr(begin, end - begin);
}

/// One spelling for all of a path: absolute, without "." and "..".
std::string Whole(const std::string& path) {
  if (path.empty() || path == kStandardStream) return path;
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(path, error);
  return error ? path : whole.lexically_normal().string();
}

std::string Digest(const std::vector<std::string>& parts) {
  std::string all;
  for (const std::string& part : parts) all += part + '\0';
  return zuna_sec::Sha256Text({reinterpret_cast<const std::uint8_t*>(all.data()), all.size()});
}

}  // namespace

FinishedWork::FinishedWork(const std::string& path) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return;
  const std::vector<std::uint8_t> bytes = ReadInput(path, kMaxReport);
  const std::string_view text = zuna_toolkit::AsText(bytes);
  for (std::size_t begin = 0, end = 0; (end = text.find('\n', begin)) != std::string_view::npos;
       begin = end + 1) {
    Take(text.substr(begin, end - begin));
  }
}

void FinishedWork::Take(std::string_view line) {
  const std::string path(PathIn(line));
  if (IsBegun(line)) {
    unfinished_[path] = line;
    return;
  }
  bool is_finished = false;
  // A key begins with a quotation mark that no text of JSON has inside: there it would be escaped.
  for (const std::string_view key : {kFinishedKey, kWrittenKey}) {
    const std::size_t at = line.find(key);
    const std::string_view mark = at == std::string_view::npos ? "" : MarkAt(line.substr(at), key);
    if (mark.empty()) continue;
    marks_.emplace(mark);
    is_finished = true;
  }
  if (is_finished) {
    unfinished_.erase(path);
  } else {
    unfinished_[path] = line;
  }
}

bool FinishedWork::IsUnfinished(const std::string& path) const {
  return !unfinished_.empty() && unfinished_.contains(PathJson("path", path));
}

bool FinishedWork::HasFailed(const std::string& path) const {
  if (unfinished_.empty()) return false;
  const auto found = unfinished_.find(PathJson("path", path));
  return found != unfinished_.end() && IsFailed(found->second);
}

std::string FinishedWork::DoneLine(const std::string& path, const std::string& written) const {
  const auto found = unfinished_.find(PathJson("path", path));
  if (found == unfinished_.end()) return "";
  const std::string& begun = found->second;
  const std::size_t at = IsBegun(begun) ? begun.find(kWrittenKey) : std::string::npos;
  return at != std::string::npos && MarkAt(std::string_view(begun).substr(at), kWrittenKey) == written
             ? DoneJson(begun)
             : "";
}

std::string WrittenMark(const std::string& path, const std::string& output, const std::string& digest) {
  return Digest({"written", Whole(path), Whole(output), digest});
}

std::string FinishedMark(const ReportLine& line, const std::string& companion,
                         const std::string& output_digest) {
  std::string companion_digest;
  if (!companion.empty()) {
    std::optional<kit::FileBytes> content;
    try {
      content = kit::ReadRegularFile(companion, zuna_toolkit::kMaxFileSize);
    } catch (const kit::RuntimeError&) {
      return "";
    }
    if (content) companion_digest = zuna_sec::Sha256Text(content->bytes());
  }
  return Digest(
      {line.options, Whole(line.path), line.digest, Whole(line.output), output_digest, companion_digest});
}

}  // namespace zuna_cli
