// Documents as Python has them.
#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "python/src/arguments.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/document/document.h"

namespace zuna_python {

/// A document that does not change, and the key material that it is written with.
class Document {
 public:
  /// `key` is not null.
  Document(zuna_toolkit::Document document, SharedKey key);

  /// The document itself.
  const zuna_toolkit::Document& content() const { return document_; }
  /// What to_bytes() and save() encrypt with.
  const SharedKey& key() const { return key_; }

  /// The document in its current form: itself, or what a legacy one is converted to at the first call. Throws
  /// zuna_toolkit::Error for a song that cannot be converted.
  const zuna_toolkit::Document& CurrentForm() const;

  /// Another document with the same key.
  std::shared_ptr<Document> With(zuna_toolkit::Document document) const;

 private:
  zuna_toolkit::Document document_;
  SharedKey key_;
  mutable std::mutex mutex_;  ///< for current_form_
  mutable std::unique_ptr<const zuna_toolkit::Document>
      current_form_;  ///< of a legacy document, once asked for
};

using SharedDocument = std::shared_ptr<Document>;
/// What `companion` tells the other document of its pair; nothing where it is null. Throws
/// zuna_toolkit::Error (kWrongCompanion, kUnrelatedCompanion) where it is no companion.
zuna_toolkit::Companion CompanionOf(const Document& document, const SharedDocument& companion);

using DocumentClass = pybind11::class_<Document, SharedDocument>;

/// Each defines a part of the module and of zuna.Document. The classes that one returns are defined before
/// it.
///@{
void AddSongs(pybind11::module_& module);
void AddComparisons(pybind11::module_& module, DocumentClass& document);
void AddDocuments(pybind11::module_& module, DocumentClass& document);
void AddConversions(DocumentClass& document);
void AddMidi(pybind11::module_& module);
void AddEntryPoints(pybind11::module_& module);
///@}

}  // namespace zuna_python
