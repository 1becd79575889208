// Sealing and opening envelopes against HMAC-SHA-256 and Twofish-CTR of the same bytes, each alone.

#include "benchmarks/envelope_rows.h"

#include <benchmark/benchmark.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/ciphers.h"
#include "benchmarks/fixtures.h"
#include "benchmarks/rows.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_bench {

namespace {

using zuna_sec::TwoFishCipherStream;

std::shared_ptr<TwoFishCipherStream> StreamOver(const std::string& plaintext) {
  auto stream = std::make_shared<TwoFishCipherStream>(std::string(), kKey.key, kKey.iv);
  stream->GetStream().write(plaintext.data(), static_cast<std::streamsize>(plaintext.size()));
  return stream;
}

/// What no envelope of as many bytes can do without, in memory that is there already.
std::function<void()> BothAlone(std::size_t bytes) {
  auto text = std::make_shared<std::vector<std::uint8_t>>(bytes);
  return [text] {
    Hmac(*text);
    Ctr(*text);
  };
}

}  // namespace

void AddEnvelopeRows(const Size& size) {
  const std::string plaintext = PlaintextOf(LegacyShow(size.count));
  const std::size_t bytes = plaintext.size();
  const std::shared_ptr<TwoFishCipherStream> stream = StreamOver(plaintext);
  const auto sealed = std::make_shared<std::vector<std::uint8_t>>(stream->GetEncryptedBytes());
  AddRow({std::string("seal an envelope, ") + size.name,
          [stream] { benchmark::DoNotOptimize(stream->GetEncryptedBytes().data()); }, BothAlone(bytes), 0,
          bytes, "aim 1.08"});
  AddRow({std::string("open an envelope, ") + size.name,
          [sealed] {
            TwoFishCipherStream opened(*sealed, kKey.key, kKey.iv);
            benchmark::DoNotOptimize(&opened.GetStream());
          },
          BothAlone(bytes), 0, bytes, "aim 1.08"});
}

}  // namespace zuna_bench
