// Differences, losses and findings.
#include <string>
#include <utility>

#include "python/src/document.h"
#include "toolkit/checking/checking.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_python {

namespace {

using zuna_toolkit::Difference;
using zuna_toolkit::FieldChange;
using zuna_toolkit::Finding;

std::vector<Difference> DifferencesOf(const Document& document, const Document& other) {
  return Unlocked([&] { return zuna_toolkit::Compare(document.content(), other.content()); });
}

/// All current versions hold the same.
std::vector<Difference> Losses(const Document& document, const std::string& version,
                               const SharedDocument& companion) {
  const cmn::FileVersion to = VersionOf(version);
  return Unlocked([&] {
    const zuna_toolkit::Document& before = document.content();
    std::vector<Difference> losses;
    const auto add = [&](const Difference& loss) { losses.push_back(loss); };
    if (before.type().is_legacy()) {
      LossesOfUp(before, zuna_toolkit::Up(before, CompanionOf(document, companion), to), add);
    } else if (to == zuna_toolkit::kLegacyVersion) {
      LossesOfDown(before, zuna_toolkit::Down(before), add);
    } else {
      zuna_toolkit::Convert(before, to);
    }
    return losses;
  });
}

std::vector<Finding> FindingsOf(const Document& document) {
  return Unlocked([&] {
    std::vector<Finding> findings;
    zuna_toolkit::Check(document.content(), [&](const Finding& finding) { findings.push_back(finding); });
    return findings;
  });
}

/// The members that tell where a Difference or Finding is.
template <typename Class>
void AddPlace(Class& type) {
  using Item = typename Class::type;
  type.def_property_readonly(
          "song", [](const Item& item) { return TextOrNone(item.song); },
          "The song number; None where it is about the whole document.")
      .def_property_readonly(
          "list", [](const Item& item) { return TextOrNone(item.place.list); },
          "As the text form calls it, such as \"tempos\"; None for a single field.")
      .def_property_readonly(
          "index", [](const Item& item) { return item.place.index; }, "In the list, from 0.")
      .def_property_readonly(
          "tick", [](const Item& item) { return item.place.tick; }, "When, in ticks.")
      .def_property_readonly(
          "voice", [](const Item& item) { return item.place.voice; }, "The number of the voice.")
      .def_property_readonly(
          "bar", [](const Item& item) { return TextOrNone(item.place.bar); },
          "The label of the bar that holds the tick.");
}

void AddDifference(py::module_& module) {
  py::class_<FieldChange>(module, "FieldChange", "A field of an entry that differs in two documents.")
      .def_property_readonly(
          "name", [](const FieldChange& change) { return Text(change.name); }, "Such as \"velocity\".")
      .def_property_readonly(
          "before", [](const FieldChange& change) { return Text(change.before); }, "As text.")
      .def_property_readonly(
          "after", [](const FieldChange& change) { return Text(change.after); }, "As text.")
      .def_property_readonly(
          "increase", [](const FieldChange& change) { return change.increase; },
          "Of a number; None for a text.")
      .def("__repr__", [](const FieldChange& change) {
        return Text("<zuna.FieldChange " + std::string(change.name) + ": " + change.before + " -> " +
                    change.after + ">");
      });
  py::class_<Difference> type(module, "Difference",
                              "A difference between two documents, or a loss of a conversion.");
  AddPlace(type);
  type.def_property_readonly(
          "code", [](const Difference& d) { return Text(CodeText(d)); },
          "A stable name, such as \"tempo-changed\".")
      .def_property_readonly(
          "after_tick", [](const Difference& d) { return d.place.after_tick; },
          "When in the second document, of what both have.")
      .def_property_readonly(
          "where", [](const Difference& d) { return TextOrNone(d.where); },
          "The voice with its name, as text.")
      .def_property_readonly(
          "before", [](const Difference& d) { return TextOrNone(d.before); },
          "In the first document, as text; None for what was added.")
      .def_property_readonly(
          "after", [](const Difference& d) { return TextOrNone(d.after); },
          "In the second document, as text; None for what was dropped.")
      .def_readonly("count", &Difference::count, "How many entries, from the index on, differ in this way.")
      .def_readonly("changes", &Difference::changes, "Fields of an entry that both have.")
      .def_property_readonly(
          "harmless", [](const Difference& d) { return zuna_toolkit::IsHarmless(d); },
          "Of a loss: the music is the same without it, or up brings it back.")
      .def("__repr__", [](const Difference& d) {
        return Text("<zuna.Difference " + CodeText(d) + (d.song.empty() ? "" : " in song " + d.song) + ">");
      });
}

void AddFinding(py::module_& module) {
  py::class_<Finding> type(module, "Finding", "Something in a document that is not sensible.");
  AddPlace(type);
  type.def_property_readonly(
          "code", [](const Finding& finding) { return Text(CodeText(finding.code)); },
          "A stable name, such as \"tempo-zero\" (docs/checks.md).")
      .def_property_readonly(
          "severity",
          [](const Finding& finding) {
            return finding.severity == zuna_toolkit::Severity::kError ? "error" : "warning";
          },
          "\"error\" or \"warning\".")
      .def_property_readonly(
          "problem", [](const Finding& finding) { return Text(finding.problem); },
          "What is wrong and where, without the song.")
      .def_property_readonly(
          "remedy", [](const Finding& finding) { return Text(finding.remedy); }, "What to do about it.")
      .def("__repr__", [](const Finding& finding) {
        return Text("<zuna.Finding " + std::string(CodeText(finding.code)) + ": " + finding.problem + ">");
      });
}

}  // namespace

void AddComparisons(py::module_& module, DocumentClass& document) {
  AddDifference(module);
  AddFinding(module);
  document
      .def("diff", DifferencesOf, py::arg("other"), "The differences between this document and another one.")
      .def("losses", Losses, py::arg("to"), py::arg("companion") = nullptr,
           "What a conversion to this version would lose. The companion is that of up(). Raises Error where "
           "it would "
           "fail.")
      .def("check", FindingsOf, "What is not sensible in the document.");
}

}  // namespace zuna_python
