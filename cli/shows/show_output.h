#pragma once

#include "cli/base/output.h"
#include "cmn/file_version.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// Writes `show` at `version`, encrypted, to `output`. Throws Failure.
void WriteShow(const zuna_midi::ShowData& show, const cmn::FileVersion& version, const CipherKey& key,
               const Output& output);

}  // namespace zuna_cli
