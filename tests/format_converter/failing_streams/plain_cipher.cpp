#include "tests/format_converter/failing_streams/plain_cipher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "zuna_sec/cipher_stream.h"

namespace {

zuna_test::FailingStreambuf::Options g_inputs;
zuna_test::FailingStreambuf::Options g_outputs;
std::size_t g_input_calls = 0;
std::size_t g_output_calls = 0;

constexpr std::ios_base::iostate kAll = std::ios_base::failbit | std::ios_base::badbit;

/// A library may read its stream to the end here, so the converter's mask must be gone.
void ExpectOwnMask(const std::ios& output) { EXPECT_EQ(output.exceptions(), std::ios_base::goodbit); }

}  // namespace

namespace plain_cipher {

void SetFaults(const zuna_test::FailingStreambuf::Options& inputs,
               const zuna_test::FailingStreambuf::Options& outputs) {
  g_inputs = inputs;
  g_outputs = outputs;
  g_input_calls = g_output_calls = 0;
}

std::size_t InputCalls() { return g_input_calls; }
std::size_t OutputCalls() { return g_output_calls; }

}  // namespace plain_cipher

namespace zuna_sec {

class PlaintextStream : public std::iostream {
 public:
  PlaintextStream() : std::iostream(nullptr) {}
  PlaintextStream(const PlaintextStream&) = delete;
  PlaintextStream& operator=(const PlaintextStream&) = delete;
  ~PlaintextStream() override {
    if (buffer_) *calls_ = std::max(*calls_, buffer_->calls());
  }

  void Open(const std::string& bytes, const zuna_test::FailingStreambuf::Options& faults, std::size_t& calls,
            std::ios_base::iostate mask) {
    buffer_ = std::make_unique<zuna_test::FailingStreambuf>(bytes, faults);
    calls_ = &calls;
    rdbuf(buffer_.get());
    exceptions(mask);
  }

  const std::string& bytes() const { return buffer_->bytes(); }

 private:
  std::unique_ptr<zuna_test::FailingStreambuf> buffer_;
  std::size_t* calls_ = nullptr;
};

CipherStream::CipherStream() : plaintext_(std::make_unique<PlaintextStream>()) {}
CipherStream::~CipherStream() = default;
std::iostream& CipherStream::GetStream() { return *plaintext_; }

TwoFishCipherStream::TwoFishCipherStream(const std::string& path, const std::vector<std::uint8_t>&,
                                         const std::vector<std::uint8_t>&) {
  if (path.empty()) {
    plaintext().Open("", g_outputs, g_output_calls, std::ios_base::goodbit);
    return;
  }
  std::ifstream file(path, std::ios::binary);
  plaintext().Open({std::istreambuf_iterator<char>(file), {}}, g_inputs, g_input_calls, kAll);
}

TwoFishCipherStream::TwoFishCipherStream(const std::vector<std::uint8_t>& data,
                                         const std::vector<std::uint8_t>&, const std::vector<std::uint8_t>&) {
  plaintext().Open({data.begin(), data.end()}, g_inputs, g_input_calls, kAll);
}

TwoFishCipherStream::~TwoFishCipherStream() = default;

void TwoFishCipherStream::WriteToFile(const std::string& path) {
  ExpectOwnMask(GetStream());
  std::ofstream(path, std::ios::binary) << plaintext().bytes();
}

std::vector<std::uint8_t> TwoFishCipherStream::GetEncryptedBytes() {
  ExpectOwnMask(GetStream());
  return {plaintext().bytes().begin(), plaintext().bytes().end()};
}

const char* TwoFishCipherStream::CipherName() const { return "none"; }

}  // namespace zuna_sec
