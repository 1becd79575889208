// Writes documents.
#include "toolkit/document/write.h"

#include <istream>
#include <ostream>

#include "toolkit/document/internal/complete_songs.h"
#include "toolkit/internal/translate.h"

namespace zuna_toolkit {

namespace {

/// Writes the model of a document at its version.
class ModelWriter {
 public:
  ModelWriter(std::ostream& stream, cmn::FileVersion version) : stream_(stream), version_(version) {}

  void operator()(const LegacyShow& legacy) const { legacy.show.write_binary(stream_); }
  void operator()(const LegacyLog& legacy) const { legacy.log.write_binary(stream_); }
  void operator()(const zuna_midi::ShowData& show) const { show.WriteBinary(stream_, version_); }
  void operator()(const CL::ChangeLog& log) const { log.WriteBinary(stream_, version_); }

 private:
  std::ostream& stream_;
  cmn::FileVersion version_;
};

}  // namespace

std::unique_ptr<zuna_sec::TwoFishCipherStream> CipherStreamOf(const Document& document,
                                                              const CipherKey& key) {
  RequireCompleteSongs(document);
  auto output = std::make_unique<zuna_sec::TwoFishCipherStream>("", key.key, key.iv);
  OnFile(document.name(), [&] {
    std::ostream& stream = output->GetStream();
    stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    std::visit(ModelWriter(stream, document.type().version), document.model());
  });
  return output;
}

void WriteDocument(const Document& document, const std::string& path, const CipherKey& key) {
  const auto output = CipherStreamOf(document, key);
  OnFile(path, [&] { output->WriteToFile(path); });
}

}  // namespace zuna_toolkit
