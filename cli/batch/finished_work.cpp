// What a report says was finished.
#include "cli/batch/finished_work.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/shared/input.h"
#include "kit/error.h"
#include "kit/file.h"
#include "toolkit/words.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kMarkSize = 64;                     // digits
constexpr std::size_t kMaxReport = std::size_t{1} << 32;  // bytes

/// The value of the key at `position` in a line, where it is a mark.
std::string_view MarkAt(std::string_view line, std::size_t position) {
  line.remove_prefix(position + kFinishedKey.size());
  const std::size_t begin = line.find_first_not_of(" :\"");
  if (begin == std::string_view::npos) return {};
  line.remove_prefix(begin);
  const bool is_whole = line.size() > kMarkSize && line[kMarkSize] == '"';
  return is_whole ? line.substr(0, kMarkSize) : std::string_view();
}

}  // namespace

FinishedWork::FinishedWork(const std::string& path) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return;
  const std::vector<std::uint8_t> bytes = ReadInput(path, kMaxReport);
  const std::string_view text = zuna_toolkit::AsText(bytes);
  // A key is followed by a quotation mark that no text of JSON has inside: there it would be escaped.
  for (std::size_t at = text.find(kFinishedKey); at != std::string_view::npos;
       at = text.find(kFinishedKey, at + 1)) {
    const std::string_view mark = MarkAt(text, at);
    if (!mark.empty()) marks_.emplace(mark);
  }
}

std::string FinishedMark(const ReportLine& line, const std::string& output_digest) {
  std::string all;
  for (const std::string& part : {line.options, line.path, line.digest, line.output, output_digest}) {
    all += part + '\0';
  }
  if (!line.companion.empty()) {
    std::optional<kit::FileBytes> content;
    try {
      content = kit::ReadRegularFile(line.companion, zuna_toolkit::kMaxFileSize);
    } catch (const kit::RuntimeError&) {
      return "";
    }
    if (content) all += zuna_sec::Sha256Text(content->bytes());
  }
  return zuna_sec::Sha256Text({reinterpret_cast<const std::uint8_t*>(all.data()), all.size()});
}

}  // namespace zuna_cli
