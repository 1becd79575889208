// envelope-vectors.json was made by an implementation of the same published constructions that shares no code
// with this one, so these tests are an independent check of both directions.

#include <gtest/gtest.h>

#include <boost/json.hpp>
#include <iterator>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_stream.h"

namespace {

using zuna_test::ByteVector;

struct Vector {
  ByteVector key, iv, plaintext, envelope;
};

std::vector<Vector> LoadVectors() {
  const auto document = boost::json::parse(zuna_test::FileText(ENVELOPE_VECTORS));
  std::vector<Vector> vectors;
  for (const auto& entry : document.at("vectors").as_array()) {
    const auto bytes = [&](const char* name) {
      return zuna_test::FromHex(std::string_view(entry.at(name).as_string()));
    };
    vectors.push_back({bytes("key"), bytes("iv"), bytes("plaintext"), bytes("envelope")});
  }
  return vectors;
}

TEST(EnvelopeVectors, AllAreThere) { EXPECT_EQ(LoadVectors().size(), 35U); }

TEST(EnvelopeVectors, Open) {
  for (const Vector& vector : LoadVectors()) {
    EXPECT_EQ(zuna_test::FromText(zuna_test::Decrypted(vector.envelope, {vector.key, vector.iv})),
              vector.plaintext);
  }
}

TEST(EnvelopeVectors, SealToTheSameBytes) {
  for (const Vector& vector : LoadVectors()) {
    const std::string plaintext(vector.plaintext.begin(), vector.plaintext.end());
    EXPECT_EQ(zuna_test::Encrypted(plaintext, {vector.key, vector.iv}), vector.envelope);
  }
}

TEST(EnvelopeVectors, OpenFromFilesAndSealIntoFiles) {
  const zuna_test::TemporaryFolder folder;
  for (const Vector& vector : LoadVectors()) {
    const std::string envelope(vector.envelope.begin(), vector.envelope.end());
    folder.Put("in", envelope);
    zuna_sec::TwoFishCipherStream stream(folder / "in", vector.key, vector.iv);
    const std::string opened{std::istreambuf_iterator<char>(stream.GetStream()), {}};
    EXPECT_EQ(zuna_test::FromText(opened), vector.plaintext);
    stream.WriteToFile(folder / "out");
    EXPECT_EQ(zuna_test::FileText(folder / "out"), envelope);
  }
}

}  // namespace
