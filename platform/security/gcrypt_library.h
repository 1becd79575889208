// libgcrypt: initialisation and errors.

#pragma once

#include <gcrypt.h>

#include <stdexcept>

namespace zuna_security {

/// The cryptographic library refused to work; the message is its reason.
class GcryptFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Initialises libgcrypt on the first call. Every function that uses libgcrypt calls this first. Throws
/// GcryptFailure where the library is too old.
void InitializeGcrypt();

/// Throws GcryptFailure for an error of libgcrypt, std::bad_alloc where that error is a lack of memory.
void CheckGcrypt(gcry_error_t error);

}  // namespace zuna_security
