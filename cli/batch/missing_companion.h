// What is said about companions that are not there.
#pragma once

#include <string>
#include <vector>

#include "cli/terminal/failure.h"
#include "toolkit/document/document.h"

namespace zuna_cli {

/// The failure of `document`, which needs its companion: none of `paths` is there. `folder` is that of
/// --companions; empty where it was not given. Its common problem tells where files were looked for.
Failure MissingCompanion(const zuna_toolkit::Document& document, const std::vector<std::string>& paths,
                         const std::string& folder);

/// A note on `document`, where its companion, which would bring back what it loses, is not at `path`, but a
/// file whose name looks alike is beside it; empty otherwise.
std::string SimilarNote(const zuna_toolkit::Document& document, const std::string& path);

}  // namespace zuna_cli
