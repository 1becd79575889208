// What readers, writers, conversions and reports take of the worst inputs.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "cli/shared/losses.h"
#include "cmn/file_format.h"
#include "tests/costs/worst_inputs.h"
#include "tests/support/cost_bounds.h"
#include "tests/support/heap_peak.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/open.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"

namespace {

using zuna_toolkit::Document;
using zuna_toolkit::OpenedFile;

/// What is done with one file.
class Steps {
 public:
  Steps(std::string name, std::size_t size) : name_(std::move(name)), size_(size) {}

  /// Returns what `work` returns, which may be a refusal with an Error.
  template <typename Work>
  auto Run(const std::string& step, Work work) const {
    const zuna_test::HeapPeak peak;
    const Check check(*this, step, peak);
    return work();
  }

  void ExpectShort(const std::string& step, std::size_t printed) const {
    EXPECT_LE(printed, zuna_test::PrintedBound(size_)) << step << " of " << name_;
  }
  void ExpectShort(const std::string& step, const std::vector<std::string>& lines) const {
    std::size_t printed = 0;
    for (const std::string& line : lines) printed += line.size() + 1;
    ExpectShort(step, printed);
  }

 private:
  struct Check {
    Check(const Steps& all, const std::string& name, const zuna_test::HeapPeak& heap)
        : steps(all), step(name), peak(heap) {}
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;
    ~Check() {
      const std::size_t bytes = peak.bytes();
      EXPECT_LE(bytes, zuna_test::HeapBound(steps.size_))
          << step << " of " << steps.name_ << ", " << steps.size_ << " bytes";
    }

    const Steps& steps;
    const std::string& step;
    const zuna_test::HeapPeak& peak;
  };

  std::string name_;
  std::size_t size_;
};

Document Read(const std::string& name, const std::string& bytes) {
  OpenedFile file =
      OpenedFile::FromBytes({bytes.begin(), bytes.end()}, name, {}, zuna_toolkit::Accept::kEncryptedOrPlain);
  return Steps(name, bytes.size()).Run("reading", [&] { return zuna_toolkit::ReadDocument(file); });
}

void Write(const Document& document, const Steps& steps) {
  steps.Run("writing", [&] { return zuna_toolkit::CipherStreamOf(document, {}); });
}

void ConvertUp(const Document& legacy, const Steps& steps) {
  const Document up = steps.Run("up", [&] { return zuna_toolkit::CurrentForm(legacy); });
  steps.ExpectShort("losses",
                    steps.Run("losses", [&] { return zuna_cli::Losses(legacy, up, true, false).Lines(); }));
}

void ConvertDown(const Document& current, const Steps& steps) {
  try {
    const Document down = steps.Run("down", [&] { return zuna_toolkit::Down(current); });
    steps.ExpectShort(
        "losses", steps.Run("losses", [&] { return zuna_cli::Losses(current, down, true, false).Lines(); }));
  } catch (const zuna_toolkit::Error&) {  // The refusal has been measured.
  }
}

void Export(const zuna_midi::ShowData& show, const Steps& steps) {
  for (const auto& [number, song] : show.songs()) {
    zuna_toolkit::midi::Report report;
    steps.Run("export", [&, &exported = *song] {
      return zuna_toolkit::smf::Write(zuna_toolkit::midi::ExportSong(exported, report));
    });
    steps.ExpectShort("remarks of export", report.remarks);
  }
}

void ReadAndConvert(const std::string& name, const std::string& bytes) {
  const Document document = Read(name, bytes);
  const Steps steps(name, bytes.size());
  if (document.type().is_legacy()) return ConvertUp(document, steps);
  // The model is the same whatever the version was, and this version has the fewest bytes.
  if (document.type().version != cmn::kDefaultVersion) return;
  for (const cmn::FileVersion& version : cmn::SupportedVersions(document.type().kind)) {
    Write(steps.Run("convert", [&] { return zuna_toolkit::Convert(document, version); }), steps);
  }
  ConvertDown(document, steps);
  if (const auto* show = document.As<zuna_midi::ShowData>()) Export(*show, steps);
}

TEST(Costs, OfFilesOfAllVersionsAreBounded) {
  for (const auto& [name, bytes] : zuna_test::WorstFiles()) {
    if (!name.ends_with(".mid")) ReadAndConvert(name, bytes);
  }
}

TEST(Costs, OfMidiFilesAreBounded) {
  for (const auto& [name, bytes] : zuna_test::WorstMidiFiles()) {
    const Steps steps(name, bytes.size());
    const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto file = steps.Run("reading", [&, size = bytes.size()] {
      zuna_toolkit::smf::ReadNotes notes;
      return zuna_toolkit::smf::Read({data, size}, notes);
    });
    zuna_toolkit::midi::Report report;
    steps.Run("import", [&] { return zuna_toolkit::midi::ImportSong(file, "1", "song", report); });
    steps.ExpectShort("remarks of import", report.remarks);
  }
}

}  // namespace
