// Twofish-256 in SIV mode by libgcrypt.

#include "platform/security/siv.h"

#include "platform/security/gcrypt_library.h"

namespace zuna_security {

namespace {

/// A keyed handle. SIV takes one message a handle; closing it wipes the key.
class Siv {
 public:
  explicit Siv(SivKey key) {
    InitializeGcrypt();
    CheckGcrypt(gcry_cipher_open(&handle_, GCRY_CIPHER_TWOFISH, GCRY_CIPHER_MODE_SIV, 0));
    const gcry_error_t error = gcry_cipher_setkey(handle_, key.data(), key.size());
    if (error != 0) gcry_cipher_close(handle_);
    CheckGcrypt(error);
  }
  Siv(const Siv&) = delete;
  Siv& operator=(const Siv&) = delete;
  ~Siv() { gcry_cipher_close(handle_); }

  gcry_cipher_hd_t handle() const { return handle_; }

 private:
  gcry_cipher_hd_t handle_ = nullptr;
};

/// libgcrypt refuses a null pointer, also for no bytes.
template <typename Byte>
Byte* NeverNull(std::span<Byte> bytes) {
  static std::uint8_t none = 0;
  return bytes.data() != nullptr ? bytes.data() : &none;
}

}  // namespace

void SivEncrypt(SivKey key, Bytes associated, Bytes plaintext, MutableBytes ciphertext,
                std::span<std::uint8_t, kSivTagSize> tag) {
  const Siv siv(key);
  CheckGcrypt(gcry_cipher_authenticate(siv.handle(), NeverNull(associated), associated.size()));
  CheckGcrypt(gcry_cipher_encrypt(siv.handle(), NeverNull(ciphertext), ciphertext.size(),
                                  NeverNull(plaintext), plaintext.size()));
  CheckGcrypt(gcry_cipher_gettag(siv.handle(), tag.data(), tag.size()));
}

bool SivDecrypt(SivKey key, Bytes associated, std::span<const std::uint8_t, kSivTagSize> tag,
                Bytes ciphertext, MutableBytes plaintext) {
  const Siv siv(key);
  CheckGcrypt(
      gcry_cipher_set_decryption_tag(siv.handle(), const_cast<std::uint8_t*>(tag.data()), tag.size()));
  CheckGcrypt(gcry_cipher_authenticate(siv.handle(), NeverNull(associated), associated.size()));
  // Only this return code tells, also for an empty ciphertext: gcry_cipher_checktag can accept a forged tag
  // here.
  const gcry_error_t error = gcry_cipher_decrypt(siv.handle(), NeverNull(plaintext), plaintext.size(),
                                                 NeverNull(ciphertext), ciphertext.size());
  if (error != 0) Wipe(plaintext);
  if (gcry_err_code(error) == GPG_ERR_CHECKSUM) return false;
  CheckGcrypt(error);
  return true;
}

}  // namespace zuna_security
