// The text of a key file.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "kit/api.h"
#include "kit/wipe.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_toolkit {

/// Key material that is wiped from memory when it is destroyed.
class SecretKey {
 public:
  /// An empty key.
  SecretKey() = default;
  /// Takes the key from `material`.
  explicit SecretKey(CipherKey&& material) : material_(std::move(material)) {}
  SecretKey(SecretKey&&) = default;
  SecretKey& operator=(SecretKey&&) = delete;
  ~SecretKey() {
    kit::Wipe(material_.key);
    kit::Wipe(material_.iv);
  }

  /// The key and the initialisation vector.
  ///@{
  const CipherKey& material() const { return material_; }
  CipherKey& material() { return material_; }
  ///@}

 private:
  CipherKey material_;
};

/// The key and IV of a text with the lines "key = HEX" and "iv = HEX", in any case; "#" begins a comment.
/// `name` is the file in messages, which never repeat what the text says. Throws Error: kBadKeyFile with the
/// line, kEmptyKey for an empty key that was not allowed.
ZUNA_API SecretKey ParseKeyFile(std::string_view text, const std::string& name, bool may_be_empty);

}  // namespace zuna_toolkit
