#include <istream>
#include <ostream>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "kit/format.h"

// Which version of a log file is read and written by what: none yet.

namespace zuna_core {

namespace {

[[noreturn]] void ThrowUnsupportedLog(cmn::FileVersion version) {
  throw cmn::UnsupportedVersionError(kit::format("Log file version %u.%u is not supported",
                                                 static_cast<unsigned>(version.major),
                                                 static_cast<unsigned>(version.minor)));
}

}  // namespace

}  // namespace zuna_core

namespace CL {

ChangeLog::ChangeLog(std::istream&) { throw cmn::DataError("Log files cannot be read yet"); }

void ChangeLog::WriteBinary(std::ostream&, const cmn::FileVersion& version) const {
  zuna_core::ThrowUnsupportedLog(version);
}
void PairedEvent::WriteBinary(std::ostream&, const cmn::FileVersion& version) const {
  zuna_core::ThrowUnsupportedLog(version);
}
void Caesura::WriteBinary(std::ostream&, const cmn::FileVersion& version) const {
  zuna_core::ThrowUnsupportedLog(version);
}
void Marker::WriteBinary(std::ostream&, const cmn::FileVersion& version) const {
  zuna_core::ThrowUnsupportedLog(version);
}

}  // namespace CL
