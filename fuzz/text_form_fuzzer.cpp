// The input: what is meant to be a text form (docs/format-2.md). A text is a show, a log or neither; the
// check of texts agrees with the readers; and what is read is written as a text that reads back the same.

#include <string>

#include "cmn/version_probe.h"
#include "fuzz/cost.h"
#include "fuzz/round_trip.h"
#include "fuzz/target.h"
#include "toolkit/document/open.h"
#include "toolkit/document/text_form.h"
#include "toolkit/error.h"

namespace {

constexpr cmn::FileVersion kText{2, 0};

bool IsCorrect(const std::string& text) {
  try {
    fuzz::Bounded("checking a text", text.size(), [&] {
      zuna_toolkit::RequireCorrectText({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()},
                                       "input");
    });
    return true;
  } catch (const zuna_toolkit::Error&) {
    return false;
  }
}

/// Whether a `Model` is read from the text. Then the probe recognises it, and it is written and read again.
template <typename Model>
bool Reads(const std::string& text, cmn::FileVersion (*probe)(std::istream&)) {
  std::string written;
  try {
    const Model model = fuzz::Read<Model>(text);
    written = fuzz::Write(model, kText);
  } catch (const cmn::DataError&) {
    return false;
  }
  std::istringstream is(text);
  fuzz::Require(probe(is) == kText, "a text that is read is probed as one");
  fuzz::Require(fuzz::Write(fuzz::Read<Model>(written), kText) == written, "a text comes back the same");
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  const bool correct = IsCorrect(text);
  if (!text.starts_with(cmn::kTextFormStart)) return 0;
  const bool is_show = Reads<zuna_midi::ShowData>(text, cmn::get_showdata_version);
  const bool is_log = Reads<CL::ChangeLog>(text, cmn::get_logdata_version);
  fuzz::Require(!is_show || !is_log, "no text is both a show and a log");
  fuzz::Require(correct || (!is_show && !is_log), "a text that is read passes the check");
  return 0;
}
