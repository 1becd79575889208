// What a conversion says on standard error.
#include "cli/batch/conversion_messages.h"

#include "cli/shared/document_text.h"
#include "cli/terminal/standard_streams.h"

namespace zuna_cli {

void Say(Outcome& outcome, const std::string& name, const std::string& text) {
  outcome.messages.push_back({false, NoteLine(name, text)});
}

void TellConversion(const Converted& converted, const zuna_toolkit::Document& before, const Losses& losses,
                    bool is_one_of_many, Outcome& outcome) {
  const std::string& name = before.name();
  outcome.losses = losses.Kinds();
  for (const std::string& note : converted.notes) Say(outcome, name, note);
  for (const std::string& line : is_one_of_many ? losses.HarmfulLines() : losses.Lines()) {
    outcome.messages.push_back({true, NoteLine(name, line)});
  }
  std::string text =
      CountsText(before.type().is_legacy() ? converted.document : before) + ", " + converted.text;
  const std::string harmless = losses.HarmlessText();
  if (losses.empty()) text += ", lossless";
  if (is_one_of_many && !harmless.empty()) text += ", without " + harmless;
  Say(outcome, name, text);
}

}  // namespace zuna_cli
