// What a report says was finished.
#include "cli/batch/finished_work.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/shared/input.h"
#include "cli/terminal/text.h"
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

/// The path of the input in a line, as JSON.
std::string_view PathIn(std::string_view line) {
  constexpr std::string_view kBefore = "\"path\": ";
  constexpr std::string_view kAfter = ", \"digest\"";
  const std::size_t begin = line.find(kBefore);
  const std::size_t end = line.find(kAfter);
  if (begin == std::string_view::npos || end == std::string_view::npos || end < begin) return {};
  return line.substr(begin + kBefore.size(), end - begin - kBefore.size());
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
  bool is_finished = false;
  // A key begins with a quotation mark that no text of JSON has inside: there it would be escaped.
  for (const std::string_view key : {kFinishedKey, kWrittenKey}) {
    const std::size_t at = line.find(key);
    const std::string_view mark = at == std::string_view::npos ? "" : MarkAt(line.substr(at), key);
    if (mark.empty()) continue;
    marks_.emplace(mark);
    is_finished = true;
  }
  const std::string path(PathIn(line));
  if (is_finished) {
    unfinished_.erase(path);
  } else {
    unfinished_.insert(path);
  }
}

bool FinishedWork::IsLast(const std::string& path) const { return !unfinished_.contains(JsonString(path)); }

std::string WrittenMark(const std::string& path, const std::string& output, const std::string& digest) {
  return Digest({"written", path, output, digest});
}

std::string FinishedMark(const ReportLine& line, const std::string& output_digest) {
  std::string companion;
  if (!line.companion.empty()) {
    std::optional<kit::FileBytes> content;
    try {
      content = kit::ReadRegularFile(line.companion, zuna_toolkit::kMaxFileSize);
    } catch (const kit::RuntimeError&) {
      return "";
    }
    if (content) companion = zuna_sec::Sha256Text(content->bytes());
  }
  return Digest({line.options, line.path, line.digest, line.output, output_digest, companion});
}

}  // namespace zuna_cli
