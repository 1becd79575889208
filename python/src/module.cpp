// The extension module zuna._zuna, which the package zuna shows.
#include "python/src/document.h"
#include "python/src/errors.h"

PYBIND11_MODULE(_zuna, module) {
  zuna_python::AddErrors(module);
  zuna_python::AddSongs(module);
  zuna_python::DocumentClass document(
      module, "Document",
      "A show or a log of any version. It does not change: what converts it makes "
      "another one. All methods may be called by several threads at once.");
  zuna_python::AddComparisons(module, document);
  zuna_python::AddDocuments(module, document);
  zuna_python::AddConversions(document);
  zuna_python::AddMidi(module);
  zuna_python::AddEntryPoints(module);
}
