// HMAC-SHA-256 (RFC 2104), HKDF (RFC 5869) and Twofish-256 in CTR and SIV mode (RFC 5297), by libgcrypt;
// docs/envelope.md.

#include "platform/security/crypto.h"

#include <gcrypt.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <new>
#include <string>
#include <vector>

namespace zuna_security {

namespace {

/// What libgcrypt does on its first use. Where memory or descriptors run out, its own initialisation ends the
/// process, and its test of Twofish leaves the process without Twofish. When this library is loaded, the
/// program has no work to lose yet.
class FirstUse {
 public:
  FirstUse() noexcept {
    gcry_check_version(nullptr);
    gcry_cipher_hd_t handle = nullptr;
    if (gcry_cipher_open(&handle, GCRY_CIPHER_TWOFISH, GCRY_CIPHER_MODE_ECB, 0) != 0) return;
    static constexpr std::array<std::uint8_t, 32> kAnyKey{};
    gcry_cipher_setkey(handle, kAnyKey.data(), kAnyKey.size());
    gcry_cipher_close(handle);
  }
};
const FirstUse g_first_use;

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

/// Completes the initialisation on the first call. Every function that uses libgcrypt calls this first.
/// Throws GcryptFailure where the library is too old.
void InitializeGcrypt() {
  static std::once_flag once;
  std::call_once(once, InitializeOnce);
}

/// Throws GcryptFailure for an error of libgcrypt, std::bad_alloc where that error is a lack of memory.
void CheckGcrypt(gcry_error_t error) {
  if (gcry_err_code(error) == GPG_ERR_NO_ERROR) return;
  if (gcry_err_code(error) == GPG_ERR_ENOMEM) throw std::bad_alloc();
  throw GcryptFailure(gcry_strerror(error));
}

constexpr std::size_t kSha256BlockSize = 64;

gcry_buffer_t Piece(Bytes bytes) {
  gcry_buffer_t piece{};
  piece.size = bytes.size();
  piece.len = bytes.size();
  piece.data = const_cast<std::uint8_t*>(bytes.data());  // libgcrypt only reads it
  return piece;
}

void XorAll(std::span<std::uint8_t, kSha256BlockSize> block, std::uint8_t value) {
  for (std::uint8_t& byte : block) byte = static_cast<std::uint8_t>(byte ^ value);
}

/// A keyed handle of Twofish. SIV takes one message a handle; closing it wipes the key.
class Twofish {
 public:
  Twofish(gcry_cipher_modes mode, Bytes key) {
    InitializeGcrypt();
    CheckGcrypt(gcry_cipher_open(&handle_, GCRY_CIPHER_TWOFISH, mode, 0));
    const gcry_error_t error = gcry_cipher_setkey(handle_, key.data(), key.size());
    if (error != 0) gcry_cipher_close(handle_);
    CheckGcrypt(error);
  }
  Twofish(const Twofish&) = delete;
  Twofish& operator=(const Twofish&) = delete;
  ~Twofish() { gcry_cipher_close(handle_); }

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

// In one call: libgcrypt's own HMAC ends the process when memory runs out; this only reports.
void Sha256(Bytes first, std::initializer_list<Bytes> rest, std::span<std::uint8_t, kSha256Size> digest) {
  InitializeGcrypt();
  std::vector<gcry_buffer_t> pieces{Piece(first)};
  for (const Bytes part : rest) {
    if (!part.empty()) pieces.push_back(Piece(part));
  }
  CheckGcrypt(
      gcry_md_hash_buffers(GCRY_MD_SHA256, 0, digest.data(), pieces.data(), static_cast<int>(pieces.size())));
}

void HmacSha256(Bytes key, std::initializer_list<Bytes> parts, std::span<std::uint8_t, kSha256Size> mac) {
  Secret<kSha256BlockSize> pad;
  if (key.size() > kSha256BlockSize) {
    Sha256(key, {}, pad.bytes().first<kSha256Size>());
  } else {
    Copy(key, pad.bytes());
  }
  XorAll(pad.bytes(), 0x36);
  Secret<kSha256Size> inner;
  Sha256(pad.bytes(), parts, inner.bytes());
  XorAll(pad.bytes(), 0x36 ^ 0x5c);
  Sha256(pad.bytes(), {inner.bytes()}, mac);
}

void HkdfExtract(Bytes salt, Bytes key, std::span<std::uint8_t, kSha256Size> prk) {
  HmacSha256(salt, {key}, prk);
}

void HkdfExpand(Bytes prk, Bytes info, Bytes more_info, MutableBytes okm) {
  Secret<kSha256Size> block;
  Bytes previous;
  for (std::uint8_t counter = 1; !okm.empty(); ++counter) {
    HmacSha256(prk, {previous, info, more_info, Bytes(&counter, 1)}, block.bytes());
    previous = block.bytes();
    const std::size_t taken = std::min(okm.size(), kSha256Size);
    Copy(previous.first(taken), okm);
    okm = okm.subspan(taken);
  }
}

void TwofishCtr(std::span<const std::uint8_t, kTwofishKeySize> key,
                std::span<const std::uint8_t, kTwofishBlockSize> counter, Bytes from, MutableBytes to) {
  const Twofish ctr(GCRY_CIPHER_MODE_CTR, key);
  CheckGcrypt(gcry_cipher_setctr(ctr.handle(), counter.data(), counter.size()));
  CheckGcrypt(gcry_cipher_encrypt(ctr.handle(), NeverNull(to), to.size(), NeverNull(from), from.size()));
}

bool TwofishSivDecrypt(std::span<const std::uint8_t, 2 * kTwofishKeySize> key, Bytes associated,
                       std::span<const std::uint8_t, kTwofishBlockSize> tag, Bytes ciphertext,
                       MutableBytes plaintext) {
  const Twofish siv(GCRY_CIPHER_MODE_SIV, key);
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
