// Reading legacy files, and whole conversions from encrypted to encrypted.

#include "benchmarks/conversion_rows.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <sstream>

#include "benchmarks/ciphers.h"
#include "benchmarks/fixtures.h"
#include "benchmarks/rows.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_bench {

namespace {

/// The least that reading events can cost: all bytes at once, and one look at every event.
void BulkRead(std::istream& is, std::size_t events) {
  is.seekg(0);
  std::vector<version0::EventObject> all(events);
  is.read(reinterpret_cast<char*>(all.data()),
          static_cast<std::streamsize>(events * sizeof(version0::EventObject)));
  std::uint32_t sum = 0;
  for (const version0::EventObject& event : all) sum += event.abs_time ^ event.track_id;
  benchmark::DoNotOptimize(sum);
}

template <typename Legacy>
std::function<void()> ReadLegacy(const std::shared_ptr<std::istringstream>& is) {
  return [is] {
    is->clear();
    is->seekg(0);
    const Legacy legacy(*is);
    benchmark::DoNotOptimize(&legacy);
  };
}

/// What a conversion does, with the ciphers alone: opens the input and seals an output of the same size.
struct CipherAlone {
  std::vector<std::uint8_t> input;
  std::string output_plaintext;

  void operator()() const {
    const zuna_sec::TwoFishCipherStream opened(input, kKey.key, kKey.iv);
    zuna_sec::TwoFishCipherStream output(std::string(), kKey.key, kKey.iv);
    output.GetStream().write(output_plaintext.data(), static_cast<std::streamsize>(output_plaintext.size()));
    benchmark::DoNotOptimize(output.GetEncryptedBytes().data());
  }
};

/// showdata_up without its files, which would measure the disk.
std::vector<std::uint8_t> UpInMemory(const std::vector<std::uint8_t>& legacy) {
  zuna_midi::ShowData show =
      [&] {
        zuna_sec::TwoFishCipherStream input(legacy, kKey.key, kKey.iv);
        return version0::ShowData(input.GetStream());
      }()
          .get_version_1_0();
  zuna_sec::TwoFishCipherStream output(std::string(), kKey.key, kKey.iv);
  show.WriteBinary(output.GetStream(), {1, 2});
  return output.GetEncryptedBytes();
}

/// The same with the ciphers of suite 1.
struct UpInSuite1 {
  std::string input;
  std::size_t output_size;

  void operator()() const {
    std::vector<std::uint8_t> text(input.begin(), input.end());
    Siv(text);
    std::istringstream is(input);
    zuna_midi::ShowData show = version0::ShowData(is).get_version_1_0();
    std::ostringstream os;
    show.WriteBinary(os, {1, 2});
    benchmark::DoNotOptimize(os);
    text.resize(output_size);
    Siv(text);
  }
};

std::string Decrypted(const std::vector<std::uint8_t>& bytes) {
  zuna_sec::TwoFishCipherStream stream(bytes, kKey.key, kKey.iv);
  std::ostringstream plaintext;
  plaintext << stream.GetStream().rdbuf();
  return plaintext.str();
}

constexpr const char* kConversionAims = "aim 1.25 and 6 ns";

}  // namespace

void AddShowConversionRows(const Size& size) {
  const std::string name = size.name;
  const std::string legacy_plaintext = PlaintextOf(LegacyShow(size.count));
  const auto is = std::make_shared<std::istringstream>(legacy_plaintext);
  AddRow({"read a legacy show, " + name, ReadLegacy<version0::ShowData>(is),
          [is, size] { BulkRead(*is, size.count); }, size.count, 0, "aim 1.35 small, 0.4 large"});
  const auto legacy = std::make_shared<std::vector<std::uint8_t>>(Encrypted(legacy_plaintext));
  const auto current = std::make_shared<std::vector<std::uint8_t>>(UpInMemory(*legacy));
  AddRow({"up to 1.2, " + name, [legacy] { benchmark::DoNotOptimize(UpInMemory(*legacy).data()); },
          CipherAlone{*legacy, Decrypted(*current)}, size.count, 0, kConversionAims});
  AddRow({"down from 1.2, " + name,
          [current] { benchmark::DoNotOptimize(showdata_down_vector(*current, kKey.key, kKey.iv).data()); },
          CipherAlone{*current, legacy_plaintext}, size.count, 0, kConversionAims});
}

void AddSuiteRows(const Size& size) {
  const std::string plaintext = PlaintextOf(LegacyShow(size.count));
  const auto legacy = std::make_shared<std::vector<std::uint8_t>>(Encrypted(plaintext));
  AddRow({std::string("up to 1.2 against suite 1, ") + size.name,
          [legacy] { benchmark::DoNotOptimize(UpInMemory(*legacy).data()); },
          UpInSuite1{plaintext, Decrypted(UpInMemory(*legacy)).size()}, 0, 0, "aim 0.55"});
}

void AddLogConversionRows(const Size& size) {
  const std::string name = size.name;
  const std::string legacy_plaintext = PlaintextOf(LegacyLog(size.count));
  const auto is = std::make_shared<std::istringstream>(legacy_plaintext);
  AddRow({"read a legacy log, " + name,
          ReadLegacy<version0::ChangeLogV0>(is),
          {},
          size.count,
          legacy_plaintext.size(),
          "no aim"});
  const auto legacy = std::make_shared<std::vector<std::uint8_t>>(Encrypted(legacy_plaintext));
  const auto up = [legacy, show = Encrypted(PlaintextOf(version0::ShowData()))] {
    return logdata_up_vector(*legacy, show, {1, 2}, kKey.key, kKey.iv);
  };
  const auto current = std::make_shared<std::vector<std::uint8_t>>(up());
  AddRow({"up a log to 1.2, " + name, [up] { benchmark::DoNotOptimize(up().data()); },
          CipherAlone{*legacy, Decrypted(*current)}, size.count, 0, kConversionAims});
  AddRow({"down a log from 1.2, " + name,
          [current] { benchmark::DoNotOptimize(logdata_down_vector(*current, kKey.key, kKey.iv).data()); },
          CipherAlone{*current, legacy_plaintext}, size.count, 0, kConversionAims});
}

}  // namespace zuna_bench
