// The input: two files (pair.h). Both are compared with themselves and with each other, and fermatas are
// copied from the first to the second.

#include "fuzz/documents.h"
#include "fuzz/pair.h"
#include "fuzz/target.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/conversion/copy_fermatas.h"

namespace {

using fuzz::Document;

/// Whether the documents hold the same; none where they cannot be compared.
std::optional<bool> Compared(const Document& before, const Document& after, std::size_t size) {
  try {
    std::size_t codes = 0;
    std::size_t differences = 0;
    fuzz::Bounded("comparison", size, [&] {
      zuna_toolkit::Compare(before, after, [&](const zuna_toolkit::Difference& difference) {
        codes += zuna_toolkit::CodeText(difference).size();
        ++differences;
      });
    });
    fuzz::Require((codes == 0) == (differences == 0), "every difference has a code");
    return differences == 0;
  } catch (const zuna_toolkit::Error&) {
    return std::nullopt;
  }
}

/// The bytes of the document in one and the same version.
std::string Normal(const Document& document) {
  return fuzz::Written(zuna_toolkit::Convert(document, cmn::kDefaultVersion));
}

void CompareBoth(const Document& first, const Document& second, std::size_t size) {
  const std::optional<bool> there = Compared(first, second, size);
  const std::optional<bool> back = Compared(second, first, size);
  fuzz::Require(there == back, "two documents differ in both directions or in none");
  if (first.type().is_legacy() || second.type().is_legacy() || !there) return;
  fuzz::Require((Normal(first) == Normal(second)) == *there, "documents without differences are the same");
}

void CopyFermatas(const Document& source, const Document& destination, std::size_t size) {
  try {
    const zuna_toolkit::FermataCopy copy = fuzz::Bounded(
        "copying fermatas", size, [&] { return zuna_toolkit::CopyFermatas(source, destination); });
    fuzz::Require(copy.document.type() == destination.type(), "a copy of fermatas keeps the version");
    const zuna_toolkit::FermataCopy again = zuna_toolkit::CopyFermatas(source, copy.document);
    fuzz::Require(again.erased_fermatas == 0 && again.erased_attaccas == 0,
                  "a second copy of the same fermatas replaces none");
  } catch (const zuna_toolkit::Error&) {
    return;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [bytes, other_bytes] = fuzz::PairOf(data, size);
  const auto first = fuzz::ReadDocument(bytes);
  const auto second = fuzz::ReadDocument(other_bytes);
  if (first) fuzz::Require(Compared(*first, *first, size).value_or(true), "a document is equal to itself");
  if (!first || !second) return 0;
  CompareBoth(*first, *second, size);
  CopyFermatas(*first, *second, size);
  return 0;
}
