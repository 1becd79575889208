#pragma once

#include <istream>

#include "cli/base/errors.h"
#include "cli/base/file_io.h"
#include "cli/base/output.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

/// Encrypts what `write(std::ostream&)` writes, and puts it into `output`. Throws Failure.
template <class Write>
void WriteEncrypted(const Output& output, const CipherKey& key, Write&& write) {
  zuna_sec::TwoFishCipherStream cipher("", key.key, key.iv);
  OnFile(OutputName(output.path), [&] {
    cipher.GetStream().exceptions(std::ios_base::badbit);  // Lets an exception of the stream through.
    write(cipher.GetStream());
  });
  output.Write(cipher);
}

}  // namespace zuna_cli
