// The exception of the module.
#pragma once

#include <pybind11/pybind11.h>

#include <exception>
#include <new>

#include "kit/error.h"
#include "toolkit/error.h"

namespace zuna_python {

/// Defines zuna.Error, and makes what the libraries throw one.
void AddErrors(pybind11::module_& module);

/// An error of which only the message is known.
zuna_toolkit::Error MessageError(zuna_toolkit::ErrorCode code, const char* message);

/// Returns what `work` returns. The converter's functions report what is wrong with content by exceptions of
/// the standard library too, which Python would take for its own IndexError and ValueError.
template <typename Work>
auto OfConverter(Work work) {
  try {
    return work();
  } catch (const kit::RuntimeError&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    throw MessageError(zuna_toolkit::ErrorCode::kBadContent, error.what());
  }
}

}  // namespace zuna_python
