#include "cli/shows/show_output.h"

#include <istream>

#include "cli/base/errors.h"
#include "cli/base/file_io.h"

namespace zuna_cli {

void WriteShow(const zuna_midi::ShowData& show, const cmn::FileVersion& version, const CipherKey& key,
               const Output& output) {
  zuna_sec::TwoFishCipherStream cipher("", key.key, key.iv);
  OnFile(OutputName(output.path), [&] { show.WriteBinary(cipher.GetStream(), version); });
  output.Write(cipher);
}

}  // namespace zuna_cli
