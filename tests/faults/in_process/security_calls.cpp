#include <iostream>
#include <iterator>
#include <memory>

#include "tests/faults/in_process/calls.h"
#include "tests/support/encrypted.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/damaged_envelope.h"
#include "zuna_sec/digest.h"

namespace public_calls {

namespace {

using zuna_sec::TwoFishCipherStream;
using zuna_test::kKey;

std::string PlaintextOf(TwoFishCipherStream& stream) {
  return {std::istreambuf_iterator<char>(stream.GetStream()), {}};
}

void Fill(TwoFishCipherStream& stream) {
  stream.GetStream().exceptions(std::ios_base::badbit | std::ios_base::failbit);
  stream.GetStream() << std::string(10000, 't');
}

}  // namespace

Calls OfSecurity() {
  Calls calls;
  const auto folder = std::make_shared<zuna_test::TemporaryFolder>();
  const std::string out = *folder / "an output whose path does not fit into a string object";
  const auto sealed = EncryptedElsewhere(std::string(20000, 't'));
  const std::string in = folder->Put("in", std::string(sealed.begin(), sealed.end()));
  calls.Add("TwoFishCipherStream(bytes)", [sealed] {
    TwoFishCipherStream stream(sealed, kKey.key, kKey.iv);
    return PlaintextOf(stream);
  });
  calls.Add("TwoFishCipherStream(path)", [in, folder] {
    TwoFishCipherStream stream(in, kKey.key, kKey.iv);
    return PlaintextOf(stream);
  });
  calls.Add("GetEncryptedBytes", [] {
    TwoFishCipherStream stream("", kKey.key, kKey.iv);
    Fill(stream);
    const auto bytes = stream.GetEncryptedBytes();
    return std::string(bytes.begin(), bytes.end());
  });
  calls.Add("WriteToFile", [out, folder] {
    TwoFishCipherStream stream("", kKey.key, kKey.iv);
    Fill(stream);
    stream.WriteToFile(out);
    return ContentOf(out);
  });
  calls.Add("OpenDamaged", [sealed] {
    auto damaged = sealed;
    damaged.back() ^= 1;
    const auto opened = zuna_sec::OpenDamaged(damaged, kKey);
    return std::string(opened.plaintext.begin(), opened.plaintext.end());
  });
  calls.Add("Sha256Text", [sealed] { return zuna_sec::Sha256Text(sealed); });
  return calls;
}

}  // namespace public_calls
