// The input: a damaged file of any kind and version, plain or encrypted with an empty key. A rescue saves
// something or throws what it may throw; its report accounts for every byte of a plain file; and what is
// saved is written as a file that reads back and needs no rescue.

#include <algorithm>
#include <optional>

#include "fuzz/documents.h"
#include "fuzz/target.h"
#include "tests/support/rescue_accounts.h"
#include "toolkit/rescue/rescue.h"

namespace {

using zuna_toolkit::Rescued;
using zuna_toolkit::RescuedSong;
using zuna_toolkit::SongState;

std::optional<Rescued> RescuedOf(const std::string& bytes) {
  const std::vector<std::uint8_t> file(bytes.begin(), bytes.end());
  const fuzz::MemoryBound bound("rescuing", fuzz::CommandHeapBound(bytes.size()));
  try {
    return zuna_toolkit::Rescue(file, "input", {}, zuna_toolkit::Accept::kEncryptedOrPlain);
  } catch (const zuna_toolkit::Error& error) {
    fuzz::Require(error.code() != zuna_toolkit::ErrorCode::kInternal, "what is left can be written");
    return std::nullopt;
  }
}

void CheckReport(const zuna_toolkit::RescueReport& report, std::size_t size) {
  const std::string plain = "is not encrypted";
  if (std::find(report.remarks.begin(), report.remarks.end(), plain) != report.remarks.end()) {
    const std::string wrong = zuna_test::WrongAccount(report, size);
    fuzz::Require(wrong.empty(), ("every byte is accounted for: " + wrong).c_str());
  }
  fuzz::Require(!report.complete() || report.unread.empty(), "nothing is unread where everything came back");
  for (const RescuedSong& song : report.songs) {
    fuzz::Require(song.state == SongState::kWhole || !song.remarks.empty(), "a damaged song has a remark");
  }
}

void CheckDocument(const Rescued& rescued) {
  const std::string written = fuzz::Written(rescued.document);
  const auto read = fuzz::ReadDocument(written);
  fuzz::Require(read.has_value() && read->type() == rescued.document.type(), "what is saved is read");
  const auto again = RescuedOf(written);
  fuzz::Require(again && fuzz::Written(again->document) == written, "what is saved is saved again the same");
  fuzz::Require(again->report.saved() == rescued.report.saved(), "every song that is saved is in the file");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto rescued = RescuedOf({data, data + size});
  if (!rescued) return 0;
  CheckReport(rescued->report, size);
  CheckDocument(*rescued);
  return 0;
}
