// What there is to tell about a document and its conversion, as text and as JSON.
#pragma once

#include <string>
#include <vector>

#include "toolkit/document/document.h"

namespace zuna_cli {

/// "3 songs, 12 voices, 4711 events" for a show, "3 songs, 12 edits" for a log.
std::string CountsText(const zuna_toolkit::Document& document);

/// The whole as aligned text for people, with a line break at its end.
std::string InfoText(const zuna_toolkit::Document& document);

/// The whole as a JSON object.
std::string InfoJson(const zuna_toolkit::Document& document);

/// What `current` loses in `legacy`, which came down from it: a line for each kind of loss, with the first
/// one. Throws zuna_toolkit::Error.
std::vector<std::string> DownLossLines(const zuna_toolkit::Document& current,
                                       const zuna_toolkit::Document& legacy);

/// What `legacy` loses in `current`, which came up from it: a line for every bar label that was cut and all
/// tracks of one id, and for each other kind of loss.
std::vector<std::string> UpLossLines(const zuna_toolkit::Document& legacy,
                                     const zuna_toolkit::Document& current);

}  // namespace zuna_cli
