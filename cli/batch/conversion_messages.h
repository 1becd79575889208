// What a conversion says on standard error.
#pragma once

#include <string>

#include "cli/batch/conversions.h"
#include "cli/batch/outcome.h"
#include "cli/shared/losses.h"
#include "toolkit/document/document.h"

namespace zuna_cli {

/// Says something about the file called `name`.
void Say(Outcome& outcome, const std::string& name, const std::string& text);

/// Says what became of `before`, with its losses by kind. Each kind has a line of its own, but where the
/// input is one of many, the line about the conversion counts those that do no harm.
void TellConversion(const Converted& converted, const zuna_toolkit::Document& before, const Losses& losses,
                    bool is_one_of_many, Outcome& outcome);

}  // namespace zuna_cli
