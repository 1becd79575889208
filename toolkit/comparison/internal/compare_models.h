// The comparisons of the models, each with everything that its documents hold.
#pragma once

#include <optional>
#include <string>

#include "CL/change_log.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "toolkit/comparison/comparison.h"
#include "zuna_midi/show_data.h"

namespace zuna_toolkit {

/// Throws Error without a file: this song is not in both documents, which should be two forms of one.
[[noreturn]] void ThrowNotOneDocument(const std::string& song);

/// The legacy forms of two current shows.
struct LegacyForms {
  const version0::ShowData& before;
  const version0::ShowData& after;
};

/// Two current shows. Voices are paired by name, the others by number. With the legacy forms of both, what
/// only these hold is compared too.
void CompareShows(const zuna_midi::ShowData& before, const zuna_midi::ShowData& after,
                  const std::optional<LegacyForms>& legacy, const DifferenceSink& sink);

/// A current show and what comes back up of `legacy`, its legacy form. Each voice is paired with the one that
/// it became.
void CompareWithUpAgain(const zuna_midi::ShowData& show, const version0::ShowData& legacy,
                        const DifferenceSink& sink);

/// A legacy show and what comes back down of `current`, its current form, but for the numbers of tracks.
void CompareWithDownAgain(const version0::ShowData& legacy, const zuna_midi::ShowData& current,
                          const DifferenceSink& sink);

/// Two current logs.
void CompareLogs(const CL::ChangeLog& before, const CL::ChangeLog& after, const DifferenceSink& sink);

/// A current log and what comes back up of `legacy`, its legacy form.
void CompareWithUpAgain(const CL::ChangeLog& log, const version0::ChangeLogV0& legacy,
                        const DifferenceSink& sink);

}  // namespace zuna_toolkit
