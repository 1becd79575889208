// The text of a key file.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "kit/wipe.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// Key material that is wiped from memory when it is destroyed.
class SecretKey {
 public:
  SecretKey() = default;
  explicit SecretKey(CipherKey&& material) : material_(std::move(material)) {}
  SecretKey(SecretKey&&) = default;
  SecretKey& operator=(SecretKey&&) = delete;
  ~SecretKey() {
    kit::Wipe(material_.key);
    kit::Wipe(material_.iv);
  }

  const CipherKey& material() const { return material_; }
  CipherKey& material() { return material_; }

 private:
  CipherKey material_;
};

/// The key and IV of a text with the lines "key = HEX" and "iv = HEX", in any case; "#" begins a comment.
/// `name` is the file in messages, which never repeat what the text says. Throws Failure: kBadInput with the
/// line, kRefused for an empty key that was not allowed.
SecretKey ParseKeyFile(std::string_view text, const std::string& name, bool may_be_empty);

}  // namespace zuna_cli
