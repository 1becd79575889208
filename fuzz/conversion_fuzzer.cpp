// The input: a show or a log of any version. It is converted to every other version, with the reports of what
// is lost, and a show to MIDI files. What is refused is refused with a zuna_toolkit::Error.

#include <vector>

#include "cli/shared/losses.h"
#include "fuzz/documents.h"
#include "fuzz/target.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/midi/songs.h"

namespace {

using fuzz::Bounded;
using fuzz::Document;

void RequireShortLines(const std::vector<std::string>& lines, std::size_t size) {
  std::size_t printed = 0;
  for (const std::string& line : lines) printed += line.size() + 1;
  fuzz::RequireShort(printed, size);
}

/// Every current version holds the whole document.
void Convert(const Document& current, std::size_t size) {
  for (const cmn::FileVersion& version : cmn::SupportedVersions(current.type().kind)) {
    const Document converted = zuna_toolkit::Convert(current, version);
    const std::string written =
        Bounded("writing another version", size, [&] { return fuzz::Written(converted); });
    const auto again = fuzz::ReadDocument(written);
    fuzz::Require(again && fuzz::HoldTheSame(current, *again), "every version holds the whole document");
  }
}

void Down(const Document& current, std::size_t size) {
  const fuzz::MemoryBound command("down", fuzz::CommandHeapBound(size));
  const Document legacy = Bounded("conversion down", size, [&] { return zuna_toolkit::Down(current); });
  RequireShortLines(
      Bounded("losses of down", size, [&] { return zuna_cli::Losses(current, legacy, true, false).Lines(); }),
      size);
  const std::string written = fuzz::Written(legacy);
  fuzz::Require(fuzz::ReadDocument(written).has_value(), "a document that came down is read");
}

void Up(const Document& legacy, std::size_t size) {
  const fuzz::MemoryBound command("up", fuzz::CommandHeapBound(size));
  const Document current = Bounded("conversion up", size, [&] {
    return zuna_toolkit::Up(legacy, zuna_toolkit::Companion{}, cmn::kDefaultVersion);
  });
  RequireShortLines(
      Bounded("losses of up", size, [&] { return zuna_cli::Losses(legacy, current, true, false).Lines(); }),
      size);
  const auto again = fuzz::ReadDocument(fuzz::Written(current));
  fuzz::Require(again && fuzz::HoldTheSame(current, *again), "a document that came up is read as it is");
}

void Export(const Document& document, std::size_t size) {
  const Document current = zuna_toolkit::CurrentForm(document);
  const auto* show = current.As<zuna_midi::ShowData>();
  if (show == nullptr) return;
  for (const auto& entry : show->songs()) {
    const zuna_midi::SongData& song = *entry.second;
    zuna_toolkit::midi::Report report;
    Bounded("export of a song", size,
            [&] { return zuna_toolkit::smf::Write(zuna_toolkit::midi::ExportSong(song, report)); });
    RequireShortLines({report.not_kept.ToString()}, size);
    RequireShortLines(report.remarks, size);
  }
}

/// Calls a conversion, which may refuse the document.
template <typename Conversion>
void Try(Conversion conversion, const Document& document, std::size_t size) {
  try {
    conversion(document, size);
  } catch (const zuna_toolkit::Error&) {
    return;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto document = fuzz::ReadDocument(std::string(data, data + size));
  if (!document) return 0;
  if (document->type().is_legacy()) {
    Try(Up, *document, size);
  } else {
    Convert(*document, size);
    Try(Down, *document, size);
  }
  Try(Export, *document, size);
  return 0;
}
