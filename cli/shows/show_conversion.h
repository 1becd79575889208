#pragma once

#include <string>

#include "cli/files/input_file.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_midi/show_data.h"

namespace zuna_cli {

/// The current form of a legacy show, respectively the legacy form of a current one. Throws Failure
/// (kBadInput) that names the song which cannot be converted. `name` is the file in the message.
zuna_midi::ShowData ToCurrent(const version0::ShowData& show, const std::string& name);
version0::ShowData ToLegacy(const zuna_midi::ShowData& show, const std::string& name);

/// The show in `file`, of whatever version, in its current form. Throws Failure.
zuna_midi::ShowData ReadAnyShow(InputFile& file);

}  // namespace zuna_cli
