// Plaintexts that are whole documents, or would be with another header.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "toolkit/document/document.h"
#include "toolkit/rescue/internal/plaintext.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

/// The document that `plaintext` is as it stands; none where it cannot be read.
std::optional<Document> ReadWhole(const ByteVector& plaintext, const std::string& name);

/// What came back of a document that is whole.
Rescued WholeOf(Document document, bool vouched);

/// The document that `plaintext` would be if its first bytes or its form were another: one with another
/// header, or the text of another version than 2.0.
std::optional<Rescued> ReadInOtherForm(const Plaintext& plaintext, const std::string& name);

/// Whether `plaintext` is a document with songs.
bool IsDocument(std::string_view plaintext);

/// Whether everything of a binary file came back but perhaps a right checksum.
bool HasEverySong(const RescueReport& report);

}  // namespace zuna_toolkit
