// What there is to tell about a document, as text and as JSON.
#pragma once

#include <string>

#include "toolkit/document/document.h"

namespace zuna_cli {

/// "3 songs, 12 voices, 4711 events" for a show, "3 songs, 12 edits" for a log.
std::string CountsText(const zuna_toolkit::Document& document);

/// The whole as aligned text for people, with a line break at its end.
std::string InfoText(const zuna_toolkit::Document& document);

/// The whole as a JSON object.
std::string InfoJson(const zuna_toolkit::Document& document);

}  // namespace zuna_cli
