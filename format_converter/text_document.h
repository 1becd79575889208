#pragma once

#include <istream>

/// Whether the stream goes on with a text document. It states its version in a place of its own, and is not
/// probed.
inline bool begins_text_document(std::istream& is) { return is.peek() == '{'; }
