// The findings of a check, as text and as JSON.
#include "cli/commands/finding_text.h"

#include "cli/shared/json_text.h"
#include "cli/terminal/text.h"
#include "toolkit/checking/checking.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Finding;
using zuna_toolkit::Severity;

constexpr std::size_t kMostOfAKind = 5;  // lines

std::string_view SeverityText(Severity severity) {
  return severity == Severity::kError ? "error" : "warning";
}

std::string Line(const Finding& finding) {
  std::string text = "  " + std::string(SeverityText(finding.severity)) + ": ";
  if (!finding.song.empty()) text += "song " + zuna_toolkit::NumberText(finding.song) + ": ";
  text += finding.problem + "; " + finding.remedy;
  return Printable(zuna_toolkit::WithCode(text, CodeText(finding.code))) + '\n';
}

std::string Object(const Finding& finding) {
  return "{\"code\": \"" + std::string(CodeText(finding.code)) + "\", \"severity\": \"" +
         std::string(SeverityText(finding.severity)) + "\", \"song\": " + JsonString(finding.song) + ", " +
         PlaceJson(finding.place) + ", \"problem\": " + JsonString(finding.problem) +
         ", \"remedy\": " + JsonString(finding.remedy) + "}";
}

}  // namespace

Findings::Findings(const zuna_toolkit::Document& document, bool all)
    : kinds_(zuna_toolkit::FindingExplanations().size()) {
  zuna_toolkit::Check(document, [&](const Finding& finding) { Add(finding, all); });
}

void Findings::Add(const Finding& finding, bool all) {
  has_findings_ = true;
  has_errors_ = has_errors_ || finding.severity == Severity::kError;
  if (all) json_ += (json_.empty() ? "" : ", ") + Object(finding);
  Kind& kind = kinds_.at(static_cast<std::size_t>(finding.code));
  if (++kind.count <= kMostOfAKind) kind.lines += Line(finding);
}

std::string Findings::Text(bool errors_only) const {
  std::string text;
  for (std::size_t i = 0; i < kinds_.size(); ++i) {
    const auto code = static_cast<zuna_toolkit::FindingCode>(i);
    if (errors_only && SeverityOf(code) != Severity::kError) continue;
    text += kinds_[i].lines;
    if (kinds_[i].count <= kMostOfAKind) continue;
    text +=
        "  and " + std::to_string(kinds_[i].count - kMostOfAKind) + " more of this kind (--json has all)\n";
  }
  return text;
}

void NoteFindings(const zuna_toolkit::Document& document, const std::string& name, Context& context) {
  const Findings findings(document, false);
  if (findings.empty()) return;
  context.Note(name, std::string("has ") + (findings.has_errors() ? "errors" : "warnings") +
                         "; zuna-convert check lists them");
}

}  // namespace zuna_cli
