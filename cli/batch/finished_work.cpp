// What a report says was finished.
#include "cli/batch/finished_work.h"

#include <filesystem>
#include <string_view>
#include <vector>

#include "cli/batch/companions.h"
#include "cli/shared/input.h"
#include "cli/shared/json_text.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "kit/error.h"
#include "kit/file.h"
#include "kit/hex.h"
#include "toolkit/words.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kDigestSize = 64;                   // digits
constexpr std::size_t kMaxReport = std::size_t{1} << 31;  // bytes

/// What follows `key` in a line; empty where the line does not have it.
std::string_view ValueOf(std::string_view line, std::string_view key) {
  // A key begins with a quotation mark that no text of JSON has inside: there it would be escaped.
  const std::string begin = std::string(key) + ": ";
  const std::size_t at = line.find(begin);
  return at == std::string_view::npos ? std::string_view() : line.substr(at + begin.size());
}

/// The value of `key` where it is a digest.
std::string_view DigestAt(std::string_view line, std::string_view key) {
  const std::string_view value = ValueOf(line, key);
  const bool is_whole = value.size() > kDigestSize + 1 && value[0] == '"' && value[kDigestSize + 1] == '"';
  return is_whole ? value.substr(1, kDigestSize) : std::string_view();
}

/// A path that PathJson() has written with `key`; empty where there is none.
std::string PathAt(std::string_view line, const std::string& key) {
  const std::string_view bytes = ValueOf(line, '"' + key + "Bytes\"");
  if (!bytes.empty()) return kit::DecodeHex(TextOfJson(bytes)).value_or("");
  const std::string_view text = ValueOf(line, '"' + key + '"');
  return text.starts_with('"') ? TextOfJson(text) : "";
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
  if (!std::filesystem::is_regular_file(path, ignored)) return;  // A pipe would be read without end.
  const std::vector<std::uint8_t> bytes = ReadInput(path, kMaxReport);
  const std::string_view text = zuna_toolkit::AsText(bytes);
  for (std::size_t begin = 0, end = 0; (end = text.find('\n', begin)) != std::string_view::npos;
       begin = end + 1) {
    Take(text.substr(begin, end - begin));
  }
}

void FinishedWork::Take(std::string_view line) {
  if (!ValueOf(line, kDryRunKey).empty()) return;
  const std::string path = Whole(PathAt(line, "path"));
  const std::string written(DigestAt(line, kWrittenKey));
  const std::string_view finished = DigestAt(line, kFinishedKey);
  if (zuna_cli::IsCurrent(line) && finished.empty()) return TakeCurrent(path, line);
  const auto piece = std::make_shared<const Piece>(PieceOf(line));
  const bool is_finished = !finished.empty() && !IsBegun(line);
  last_[path] = {is_finished, IsFailed(line), piece};
  current_.erase(path);
  if (IsBegun(line)) begun_[written] = line;
  if (!is_finished) return;
  begun_.erase(written);
  for (const std::string_view mark : {finished, std::string_view(written)}) {
    const auto [found, is_new] = marks_.try_emplace(std::string(mark), piece);
    // An input that was passed over has nothing else to tell: an earlier line has it.
    if (!is_new && !IsSkipped(line)) found->second = piece;
  }
}

void FinishedWork::TakeCurrent(const std::string& path, std::string_view line) {
  current_[path] = DigestAt(line, kDigestKey);
  // It may be the output of an earlier line, which tells more.
  Last& last = last_[path];
  if (last.piece == nullptr || last.is_failed) last.piece = std::make_shared<const Piece>(PieceOf(line));
  last.is_finished = true;
  last.is_failed = false;
}

FinishedWork::Piece FinishedWork::PieceOf(std::string_view line) {
  const std::string_view kinds = ValueOf(line, kLossKindsKey);
  return {TextOfJson(ValueOf(line, kOptionsKey)), PathAt(line, std::string(kCompanion)),
          std::string(DigestAt(line, kCompanionDigestKey)), std::string(kinds.substr(0, kinds.find(']')))};
}

const FinishedWork::Piece* FinishedWork::Find(const std::string& mark) const {
  const auto found = marks_.find(mark);
  return found == marks_.end() ? nullptr : found->second.get();
}

const FinishedWork::Last* FinishedWork::LastOf(const std::string& path) const {
  if (last_.empty()) return nullptr;
  const auto found = last_.find(Whole(path));
  return found == last_.end() ? nullptr : &found->second;
}

bool FinishedWork::IsUnfinished(const std::string& path) const {
  const Last* last = LastOf(path);
  return last != nullptr && !last->is_finished;
}

bool FinishedWork::HasFailed(const std::string& path) const {
  const Last* last = LastOf(path);
  return last != nullptr && last->is_failed;
}

bool FinishedWork::IsCurrent(const std::string& path, const std::string& digest) const {
  if (current_.empty()) return false;
  const auto found = current_.find(Whole(path));
  return found != current_.end() && found->second == digest;
}

std::optional<Status> FinishedWork::EarlierStatus(const std::string& path, const std::string& command) const {
  const Last* last = LastOf(path);
  if (last == nullptr || !IsOfCommand(*last->piece, command)) return std::nullopt;
  if (last->is_failed) return Status::kFailed;
  return last->is_finished ? std::optional(Status::kDone) : std::nullopt;
}

std::string FinishedWork::DoneLine(const std::string& written) const {
  const auto found = begun_.find(written);
  return found == begun_.end() ? "" : DoneJson(found->second);
}

std::string DigestOfFile(const std::string& path) {
  try {
    const auto content = kit::ReadRegularFile(path, zuna_toolkit::kMaxFileSize);
    return content ? zuna_sec::Sha256Text(content->bytes()) : "";
  } catch (const kit::RuntimeError&) {
    return "";
  }
}

std::string WrittenMark(const std::string& path, const std::string& output, const std::string& digest) {
  return Digest({"written", Whole(path), Whole(output), digest});
}

std::string FinishedMark(const ReportLine& line, const std::string& output_digest) {
  return Digest({line.options, Whole(line.path), line.digest, Whole(line.output), output_digest});
}

bool HasSameCompanion(const FinishedWork::Piece& piece, const std::string& path, bool is_named) {
  if (piece.companion.empty()) return !is_named || !HasStandIn(piece.options);
  if (piece.companion_digest.empty()) return false;
  return (!is_named && DigestOfFile(piece.companion) == piece.companion_digest) ||
         (!path.empty() && DigestOfFile(path) == piece.companion_digest);
}

bool IsOfCommand(const FinishedWork::Piece& piece, const std::string& command) {
  return (piece.options + ' ').starts_with(command + ' ');
}

}  // namespace zuna_cli
