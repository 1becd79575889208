// The files of vectors were made by an implementation of the same published constructions that shares no code
// with this one, so these tests are an independent check of both directions.

#include <gtest/gtest.h>

#include <boost/json.hpp>
#include <iterator>

#include "tests/platform/security/sealed.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/damaged_envelope.h"

namespace {

using zuna_test::ByteVector;

struct Vector {
  ByteVector key, iv, plaintext, envelope;
};

/// Suite 1 is only read.
const std::string kSuite1 = ENVELOPE_VECTORS "/envelope-vectors.json";
const std::string kSuite2 = ENVELOPE_VECTORS "/envelope-vectors-2.json";

std::vector<Vector> LoadVectors(const std::string& path) {
  const auto document = boost::json::parse(zuna_test::FileText(path));
  std::vector<Vector> vectors;
  for (const auto& entry : document.at("vectors").as_array()) {
    const auto bytes = [&](const char* name) {
      return zuna_test::FromHex(std::string_view(entry.at(name).as_string()));
    };
    vectors.push_back({bytes("key"), bytes("iv"), bytes("plaintext"), bytes("envelope")});
  }
  return vectors;
}

class EnvelopeVectors : public testing::TestWithParam<std::string> {};

TEST_P(EnvelopeVectors, AllAreThere) { EXPECT_EQ(LoadVectors(GetParam()).size(), 35U); }

TEST_P(EnvelopeVectors, Open) {
  for (const Vector& vector : LoadVectors(GetParam())) {
    EXPECT_EQ(zuna_test::FromText(zuna_test::Decrypted(vector.envelope, {vector.key, vector.iv})),
              vector.plaintext);
  }
}

TEST_P(EnvelopeVectors, OpenAsDamagedOnes) {
  for (const Vector& vector : LoadVectors(GetParam())) {
    const zuna_sec::DamagedEnvelope opened = zuna_sec::OpenDamaged(vector.envelope, {vector.key, vector.iv});
    EXPECT_TRUE(opened.authentic);
    EXPECT_EQ(opened.plaintext, vector.plaintext);
  }
}

TEST_P(EnvelopeVectors, OpenFromFilesAndSealIntoFilesOfSuite2) {
  const zuna_test::TemporaryFolder folder;
  for (const Vector& vector : LoadVectors(GetParam())) {
    folder.Put("in", {vector.envelope.begin(), vector.envelope.end()});
    zuna_sec::TwoFishCipherStream stream(folder / "in", vector.key, vector.iv);
    const std::string opened{std::istreambuf_iterator<char>(stream.GetStream()), {}};
    EXPECT_EQ(zuna_test::FromText(opened), vector.plaintext);
    stream.WriteToFile(folder / "out");
    EXPECT_EQ(zuna_test::FileBytes(folder / "out"), zuna_test::Encrypted(opened, {vector.key, vector.iv}));
    if (GetParam() == kSuite2) {
      EXPECT_EQ(zuna_test::FileBytes(folder / "out"), vector.envelope);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Suites, EnvelopeVectors, testing::Values(kSuite1, kSuite2),
                         [](const auto& path) { return path.param == kSuite1 ? "Suite1" : "Suite2"; });

TEST(EnvelopeVectorsOfSuite2, SealToTheSameBytes) {
  for (const Vector& vector : LoadVectors(kSuite2)) {
    const std::string plaintext(vector.plaintext.begin(), vector.plaintext.end());
    EXPECT_EQ(zuna_test::Encrypted(plaintext, {vector.key, vector.iv}), vector.envelope);
  }
}

TEST(SealedInTests, AreEnvelopesOfSuite1) {
  for (const Vector& vector : LoadVectors(kSuite1)) {
    const std::string plaintext(vector.plaintext.begin(), vector.plaintext.end());
    EXPECT_EQ(zuna_test::Sealed(zuna_security::Suite::kCmac, plaintext, {vector.key, vector.iv}),
              vector.envelope);
  }
}

}  // namespace
