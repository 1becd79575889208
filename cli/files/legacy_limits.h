#pragma once

#include <string>

#include "CL/change_log.h"
#include "zuna_midi/show_data.h"

namespace zuna_cli {

/// Throws Failure (kBadInput), naming the song, for a show that format 0.0 has no room for: more than 255
/// songs, a song without messages, a text of more than 255 bytes. `name` is the file in the message.
void RequireLegacyLimits(const zuna_midi::ShowData& show, const std::string& name);

/// The same for a log: a text of more than 255 bytes.
void RequireLegacyLimits(const CL::ChangeLog& log, const std::string& name);

}  // namespace zuna_cli
