// The text form of legacy documents (docs/text-form.md).
#pragma once

#include <iosfwd>

#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"

namespace zuna_toolkit {

/// Write a legacy show or log as text. Throw kit::IoError.
///@{
void WriteLegacyText(std::ostream& os, const version0::ShowData& show);
void WriteLegacyText(std::ostream& os, const version0::ChangeLogV0& log);
///@}

/// Read a legacy show or log from text. Throw cmn::DataError; for what no legacy file can hold too.
///@{
version0::ShowData ReadLegacyTextShow(std::istream& is);
version0::ChangeLogV0 ReadLegacyTextLog(std::istream& is);
///@}

}  // namespace zuna_toolkit
