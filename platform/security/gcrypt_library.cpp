// The one place that initialises libgcrypt and translates its errors.

#include "platform/security/gcrypt_library.h"

#include <mutex>
#include <new>
#include <string>

namespace zuna_security {

namespace {

void InitializeOnce() {
  if (gcry_check_version("1.10.0") == nullptr) {
    throw GcryptFailure("libgcrypt 1.10 or later is needed, this is " +
                        std::string(gcry_check_version(nullptr)));
  }
  // The application may use libgcrypt too and has then decided for itself.
  if (gcry_control(GCRYCTL_INITIALIZATION_FINISHED_P) != 0) return;
  gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
  gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
}

}  // namespace

void InitializeGcrypt() {
  static std::once_flag once;
  std::call_once(once, InitializeOnce);
}

void CheckGcrypt(gcry_error_t error) {
  if (gcry_err_code(error) == GPG_ERR_NO_ERROR) return;
  if (gcry_err_code(error) == GPG_ERR_ENOMEM) throw std::bad_alloc();
  throw GcryptFailure(gcry_strerror(error));
}

}  // namespace zuna_security
