// The findings of a check, as text and as JSON.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/shared/context.h"
#include "toolkit/checking/finding.h"
#include "toolkit/document/document.h"

namespace zuna_cli {

/// All findings about one document.
class Findings {
 public:
  /// Checks the document. `all` keeps all findings; otherwise only the first ones of each kind.
  Findings(const zuna_toolkit::Document& document, bool all);

  bool empty() const { return !has_findings_; }
  bool has_errors() const { return has_errors_; }

  /// A line for each, indented: "  error: song 2: the tempo at 480 is 0 us; correct it [tempo-zero]". Of many
  /// of one kind the first ones, and how many more there are. `errors_only` leaves warnings out.
  std::string Text(bool errors_only) const;

  /// Objects of JSON, separated by commas.
  const std::string& Json() const { return json_; }

 private:
  struct Kind {
    std::size_t count = 0;
    std::string lines;
  };

  void Add(const zuna_toolkit::Finding& finding, bool all);

  bool has_findings_ = false;
  bool has_errors_ = false;
  std::vector<Kind> kinds_;
  std::string json_;
};

/// Says so where a check finds errors or warnings in `document`, which was written into the file called
/// `name`.
void NoteFindings(const zuna_toolkit::Document& document, const std::string& name, Context& context);

}  // namespace zuna_cli
