// The fields of files that the core library does not list.
#pragma once

#include <string_view>

#include "cmn/field_list.h"
#include "cmn/file_format.h"

namespace zuna_toolkit {

/// Hands out the fields of a legacy file (docs/format-0.md) as far as it can be read.
void ListLegacyFields(cmn::FileKind kind, std::string_view file, const cmn::TakeField& take);

/// Hands out the fields of a text form (docs/format-2.md). Its reader has accepted `text`, which may be the
/// beginning of a text form only.
void ListTextFields(std::string_view text, const cmn::TakeField& take);

}  // namespace zuna_toolkit
