// envelope-vectors.json was made by an implementation of the same published constructions that shares no code
// with this one, so these tests are an independent check of both directions.

#include <gtest/gtest.h>

#include <boost/json.hpp>
#include <iterator>

#include "tests/security/support.h"
#include "zuna_sec/cipher_stream.h"

namespace {

using support::ByteVector;

struct Vector {
  ByteVector key, iv, plaintext, envelope;
};

std::vector<Vector> LoadVectors() {
  const auto document =
      boost::json::parse(support::ReadPlainFile(ZUNA_SOURCE_DIR "/tests/security/envelope-vectors.json"));
  std::vector<Vector> vectors;
  for (const auto& entry : document.at("vectors").as_array()) {
    const auto bytes = [&](const char* name) {
      return support::FromHex(std::string_view(entry.at(name).as_string()));
    };
    vectors.push_back({bytes("key"), bytes("iv"), bytes("plaintext"), bytes("envelope")});
  }
  return vectors;
}

TEST(EnvelopeVectors, AllAreThere) { EXPECT_EQ(LoadVectors().size(), 35U); }

TEST(EnvelopeVectors, Open) {
  for (const Vector& vector : LoadVectors()) {
    EXPECT_EQ(support::FromText(support::Opened(vector.envelope, vector.key, vector.iv)), vector.plaintext);
  }
}

TEST(EnvelopeVectors, SealToTheSameBytes) {
  for (const Vector& vector : LoadVectors()) {
    const std::string plaintext(vector.plaintext.begin(), vector.plaintext.end());
    EXPECT_EQ(support::Sealed(plaintext, vector.key, vector.iv), vector.envelope);
  }
}

TEST(EnvelopeVectors, OpenFromFilesAndSealIntoFiles) {
  const support::TemporaryFolder folder;
  for (const Vector& vector : LoadVectors()) {
    const std::string envelope(vector.envelope.begin(), vector.envelope.end());
    support::WritePlainFile(folder / "in", envelope);
    zuna_sec::TwoFishCipherStream stream(folder / "in", vector.key, vector.iv);
    const std::string opened{std::istreambuf_iterator<char>(stream.GetStream()), {}};
    EXPECT_EQ(support::FromText(opened), vector.plaintext);
    stream.WriteToFile(folder / "out");
    EXPECT_EQ(support::ReadPlainFile(folder / "out"), envelope);
  }
}

}  // namespace
