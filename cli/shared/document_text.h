// What there is to tell about a document, as text and as JSON.
#pragma once

#include <string>
#include <vector>

#include "toolkit/document/document.h"

namespace zuna_cli {

/// "3 songs, 12 voices, 4711 events" for a show, "3 songs, 12 edits" for a log.
std::string CountsText(const zuna_toolkit::Document& document);

/// "song 3", "songs 3, 4", "songs 1, 2, 3, 4, 5, 6, 7, 8 and 30 more"
std::string SongsText(const std::vector<std::string>& numbers);

/// The whole as aligned text for people, with a line break at its end.
std::string InfoText(const zuna_toolkit::Document& document, bool is_encrypted);

/// The text form of the whole. Throws zuna_toolkit::Error.
std::string TextFormOf(const zuna_toolkit::Document& document);

/// The whole as a JSON object; `path` is that of the document.
std::string InfoJson(const zuna_toolkit::Document& document, const std::string& path, bool is_encrypted);

}  // namespace zuna_cli
